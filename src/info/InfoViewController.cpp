#include "info/InfoViewController.h"

#include "app/ModalPresentation.h"
#include "app/ModalScreenFrame.h"
#include "app/SafeArea.h"
#include "platform/Configuration.h"
#include "platform/PreferredLanguages.h"
#include "platform/gui/DeviceMetrics.h"
#include "platform/gui/UrlOpener.h"
#include "ui/Accessibility.h"
#include "ui/ColorPalette.h"
#include "ui/FlatButton.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QSysInfo>
#include <QVBoxLayout>

namespace {

void styleButton(FlatButton *button, int pixelSize, bool bold)
{
    button->setButtonColor(ColorPalette::turquoiseColor());
    button->setShadowColor(ColorPalette::greenSeaColor());
    button->setCornerRadius(3);
    QFont font = button->font();
    font.setPixelSize(pixelSize);
    font.setBold(bold);
    button->setFont(font);
    button->setTitleColor(ColorPalette::cloudsColor(), false);
    button->setTitleColor(ColorPalette::cloudsColor(), true);
}

// The application's mark: a map pin on a turquoise tile.
QPixmap emblemPixmap(qreal ratio)
{
    const int side = 88;
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath tile;
    tile.addRoundedRect(QRectF(0, 0, side, side), 20, 20);
    painter.fillPath(tile, ColorPalette::turquoiseColor());
    QPainterPath pin;
    const QPointF top(side / 2.0, 18);
    pin.moveTo(side / 2.0, 72);
    pin.cubicTo(30, 54, 24, 46, 24, 38);
    pin.arcTo(QRectF(24, top.y(), 40, 40), 180, -180);
    pin.cubicTo(64, 46, 58, 54, side / 2.0, 72);
    painter.fillPath(pin, ColorPalette::cloudsColor());
    painter.setBrush(ColorPalette::turquoiseColor());
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(side / 2.0, 38), 8, 8);
    return pixmap;
}

} // namespace

InfoViewController::InfoViewController(const Needs &needs, ScreenMaker makeWhitelistScreen,
                                       QWidget *parent)
    : QWidget(parent), m_needs(needs), m_makeWhitelistScreen(std::move(makeWhitelistScreen))
{
    setObjectName(QStringLiteral("InfoViewController"));
    setAttribute(Qt::WA_StyledBackground);

    const ModalScreenFrame::TitleBar bar = ModalScreenFrame::buildTopBar(this);
    bgLabel = bar.bgLabel;
    topView = bar.topView;
    titleTopLabel = bar.titleTopLabel;
    setDecorative(titleTopLabel); // this screen's bar has no title

    m_body = new QWidget(this);
    m_body->setObjectName(QStringLiteral("body"));
    auto *column = new QVBoxLayout(m_body);
    column->setContentsMargins(32, 24, 32, 24);
    column->setSpacing(18);
    column->addStretch(2);
    auto *emblem = new QLabel(m_body);
    emblem->setObjectName(QStringLiteral("emblem"));
    emblem->setPixmap(emblemPixmap(devicePixelRatioF()));
    emblem->setAlignment(Qt::AlignCenter);
    setDecorative(emblem);
    column->addWidget(emblem);
    titleLabel = new QLabel(m_body);
    titleLabel->setObjectName(QStringLiteral("titleLabel"));
    titleLabel->setAlignment(Qt::AlignCenter);
    titleLabel->setWordWrap(true);
    column->addWidget(titleLabel);
    column->addSpacing(18);
    auto makeButton = [this, column](const char *name) {
        auto *button = new FlatButton(m_body);
        button->setObjectName(QLatin1String(name));
        button->setMinimumHeight(56);
        column->addWidget(button);
        return button;
    };
    wihteListButton = makeButton("wihteListButton");
    visitButton = makeButton("visitButton");
    contactButton = makeButton("contactButton");
    column->addStretch(3);

    bottomView = new QWidget(this);
    bottomView->setObjectName(QStringLiteral("bottomView"));
    backButton = new FlatButton(bottomView);
    backButton->setObjectName(QStringLiteral("backButton"));
    backButton->setMinimumHeight(40);
    auto *bottomRow = new QHBoxLayout(bottomView);
    bottomRow->setContentsMargins(16, 10, 16, 10);
    bottomRow->addWidget(backButton);
    bottomRow->setAlignment(backButton, Qt::AlignTop);

    connect(wihteListButton, &QAbstractButton::clicked, this, &InfoViewController::wihteList);
    connect(visitButton, &QAbstractButton::clicked, this, &InfoViewController::visitVelmora);
    connect(contactButton, &QAbstractButton::clicked, this, &InfoViewController::contactTheAuthor);
    connect(backButton, &QAbstractButton::clicked, this, &InfoViewController::done);

    viewDidLoad();
}

void InfoViewController::viewDidLoad()
{
    // both values are the running program's: the name it was given at
    // start-up and the version the build stamped into it
    titleLabel->setText(QStringLiteral("%1 %2").arg(QGuiApplication::applicationDisplayName(),
                                                    QCoreApplication::applicationVersion()));
    wihteListButton->setText(tr("White List"));
    visitButton->setText(tr("Visit Velmora"));
    contactButton->setText(tr("Contact Author"));
    backButton->setText(tr("Back"));
    for (FlatButton *button : {wihteListButton, visitButton, contactButton})
        styleButton(button, 24, true);
    styleButton(backButton, 15, false);

    if (SafeArea::of(m_needs.deviceMetrics).statusBar)
        bgLabel->show();
    layoutBars();
}

void InfoViewController::done()
{
    dismissViewController(this);
}

void InfoViewController::wihteList()
{
    if (m_makeWhitelistScreen)
        presentViewController(this, m_makeWhitelistScreen(), ModalTransition::CoverVertical);
}

QUrl InfoViewController::contactUrl() const
{
    // room to write above a line that tells support what the user runs;
    // mail links break lines with CR LF
    const QString body =
        QStringLiteral("\r\n\r\n\r\n%1 %2, %3")
            .arg(QGuiApplication::applicationDisplayName(), QCoreApplication::applicationVersion(),
                 QSysInfo::prettyProductName());
    const QByteArray mail =
        QUrl::toPercentEncoding(m_needs.configuration.supportMail, QByteArrayLiteral("@"));
    return QUrl::fromEncoded("mailto:" + mail + "?body=" + QUrl::toPercentEncoding(body),
                             QUrl::StrictMode);
}

void InfoViewController::contactTheAuthor()
{
    // the system's mail program writes the mail; a URL it cannot open is
    // ignored
    if (m_needs.urlOpener)
        m_needs.urlOpener->openUrl(contactUrl());
}

void InfoViewController::visitVelmora()
{
    const QUrl page =
        isChinese() ? m_needs.configuration.shopUrl : m_needs.configuration.websiteUrl;
    if (m_needs.urlOpener)
        m_needs.urlOpener->openUrl(page);
}

QStringList InfoViewController::preferredLanguages() const
{
    return ::preferredLanguages(m_needs.configuration);
}

bool InfoViewController::isChinese() const
{
    const QStringList languages = preferredLanguages();
    return !languages.isEmpty() && languages.constFirst() == QLatin1String("zh-Hans");
}

void InfoViewController::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        done();
    else
        QWidget::keyPressEvent(event);
}

void InfoViewController::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layoutBars();
}

void InfoViewController::layoutBars()
{
    const ModalScreenFrame frame = ModalScreenFrame::forSize(size(), m_needs.deviceMetrics);
    bgLabel->setGeometry(frame.statusStrip);
    topView->setGeometry(frame.topView);
    m_body->setGeometry(frame.body);
    bottomView->setGeometry(frame.bottomView);
}
