#pragma once

#include <QList>
#include <QUrl>

class UrlOpener
{
public:
    virtual ~UrlOpener() = default;
    virtual bool openUrl(const QUrl &url) = 0;
};

class DesktopUrlOpener : public UrlOpener
{
public:
    bool openUrl(const QUrl &url) override;
};
