#pragma once

#include <QString>

#include <functional>

class QWidget;

// How a screen asks a person for a GPX file to read or to write. The screens
// hold one of these functions, the file dialog unless told otherwise, so
// that tests hand them a path without a dialog. An empty answer: nothing was
// chosen.
namespace FileChoice {

enum class Mode { Open, Save };
using Function = std::function<QString(QWidget *over, Mode mode, const QString &title)>;

// The desktop's file dialog, showing GPX files.
QString gpxDialog(QWidget *over, Mode mode, const QString &title);

} // namespace FileChoice
