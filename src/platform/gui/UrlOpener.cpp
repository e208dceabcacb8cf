#include "platform/gui/UrlOpener.h"

#include <QDesktopServices>

bool DesktopUrlOpener::openUrl(const QUrl &url)
{
    return QDesktopServices::openUrl(url);
}
