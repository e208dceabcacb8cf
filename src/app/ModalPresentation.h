#pragma once

#include <functional>

class QWidget;

// How a presented screen arrives and leaves: sliding up from the bottom,
// turning over like a card, or fading in.
enum class ModalTransition { CoverVertical, FlipHorizontal, CrossDissolve };

// Secondary screens (address picker, favourites, information, whitelist)
// cover the whole window, phone style, until they dismiss themselves. The
// window owns a presented screen; dismissal deletes it.

// Shows `screen` over the window that holds `presenter`, as a child covering
// the whole window, animated in with `transition`; `completion` runs once it
// is in place. The keyboard goes to the screen's first control; once it is in
// place, what it covers is hidden, out of reach of Tab and screen readers.
void presentViewController(QWidget *presenter, QWidget *screen, ModalTransition transition,
                           std::function<void()> completion = {});
// Shows again what `screen` covered (a presenting BaseViewController gets
// viewWillAppear() and re-reads the files), animates the screen out the way it
// came, then deletes it (deleteLater), gives the keyboard back to the control
// that had it before and runs `completion`. Safe to call twice: the second
// call does nothing. A leaving screen is disabled, so that no press acts
// twice.
void dismissViewController(QWidget *screen, std::function<void()> completion = {});
// The screen `presenter` presented and that is still shown, or null.
QWidget *presentedViewController(QWidget *presenter);

// Tests and pictures turn the animations off: screens then arrive and leave
// at once and the completions run before the call returns.
void setModalAnimationsEnabled(bool enabled);
