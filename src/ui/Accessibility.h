#pragma once

class QLabel;
class QString;
class QWidget;

// Lets screen readers and test drivers find and work the toolkit's own
// controls through Qt's accessibility support (AT-SPI on Linux): the flat
// switch as a checkable toggle button with toggle and press actions, the map
// as a focusable canvas whose description is its centre coordinate. Flat
// buttons need nothing: Qt already treats them as the push buttons they are.
// Plain containers (screens, bars, panels) list only the children a person
// can see and use: hidden ones, pictures and backgrounds are left out.
// Call once the application object exists, before the first window; calling
// again does nothing.
void installAccessibilityFactories();

// Makes `label` read out what it shows: its text is its accessible name, and
// `role` (what the value is, e.g. "Address") its description. Qt tells screen
// readers of each new name that setText() brings; clear() tells nothing, so
// such labels are emptied with setText(QString()).
void makeValueLabel(QLabel *label, const QString &role);

// Leaves `widget` (a picture, a background, a spacer) out of the tree screen
// readers walk. A button with decorative parts is read as one control.
void setDecorative(QWidget *widget, bool decorative = true);

// Leaves the siblings below `cover` (a sheet laid over part of a screen) out
// of the tree screen readers walk while `covered`; they stay on screen.
void setSiblingsCovered(QWidget *cover, bool covered);
