#pragma once

// Lets screen readers and test drivers find and work the toolkit's own
// controls through Qt's accessibility support (AT-SPI on Linux): the flat
// switch as a checkable toggle button with toggle and press actions, the map
// as a focusable canvas whose description is its centre coordinate. Flat
// buttons need nothing: Qt already treats them as the push buttons they are.
// Call once the application object exists, before the first window; calling
// again does nothing.
void installAccessibilityFactories();
