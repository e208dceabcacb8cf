#pragma once

#include "platform/gui/UrlOpener.h"

#include <QList>

// Keeps every URL it is asked to open instead of opening it.
class RecordingUrlOpener : public UrlOpener
{
public:
    bool openUrl(const QUrl &url) override
    {
        opened.append(url);
        return true;
    }
    QList<QUrl> opened;
};
