#pragma once

#include <QStringList>
#include <QUrl>
#include <QWidget>

#include <functional>

class Configuration;
class DeviceMetrics;
class FlatButton;
class QLabel;
class UrlOpener;

// The information screen: the application's name and version, the way to
// the whitelist, a mail to the maker and the maker's web page. Opened over
// either main screen; "Back" dismisses it. The whitelist screen comes from
// the caller, which knows the application list.
class InfoViewController : public QWidget
{
    Q_OBJECT

public:
    using ScreenMaker = std::function<QWidget *()>;
    // What the screen uses of the outside world; not owned, kept alive by the
    // caller. No URL opener: the mail and web buttons do nothing; no device
    // metrics: the default layout.
    struct Needs
    {
        const Configuration &configuration; // mail, shop and web addresses, languages
        UrlOpener *urlOpener = nullptr;
        DeviceMetrics *deviceMetrics = nullptr;
    };

    InfoViewController(const Needs &needs, ScreenMaker makeWhitelistScreen,
                       QWidget *parent = nullptr);

    // Whether the user's first preferred language is exactly "zh-Hans"; a
    // region or another script ("zh-Hans-CN", "zh-Hant") does not count.
    bool isChinese() const;
    // The user's preferred languages, most preferred first: the configured
    // ones, else the system's.
    QStringList preferredLanguages() const;
    // The mail the contact button opens: the support address and a body.
    QUrl contactUrl() const;

public slots:
    void done();
    void wihteList();
    void contactTheAuthor();
    void visitVelmora();

protected:
    void resizeEvent(QResizeEvent *event) override;
    // Escape closes the screen, as its back button does
    void keyPressEvent(QKeyEvent *event) override;

private:
    void viewDidLoad();
    void layoutBars();

    const Needs m_needs;
    ScreenMaker m_makeWhitelistScreen;
    FlatButton *wihteListButton = nullptr;
    FlatButton *visitButton = nullptr;
    FlatButton *contactButton = nullptr;
    QLabel *titleLabel = nullptr;
    FlatButton *backButton = nullptr;
    QLabel *bgLabel = nullptr;
    QLabel *titleTopLabel = nullptr;
    QWidget *topView = nullptr;
    QWidget *bottomView = nullptr;
    QWidget *m_body = nullptr;
};
