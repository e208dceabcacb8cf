#include "app/FileChoice.h"

#include <QCoreApplication>
#include <QFileDialog>

QString FileChoice::gpxDialog(QWidget *over, Mode mode, const QString &title)
{
    QFileDialog dialog(over, title, QString(),
                       QCoreApplication::translate("FileChoice", "GPX files (*.gpx)"));
    const bool save = mode == Mode::Save;
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // a name typed without the extension still makes a file the filter shows
    dialog.setDefaultSuffix(QStringLiteral("gpx"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().first();
}
