#include "Gallery.h"

#include "app/ProgressHUD.h"
#include "ui/ColorPalette.h"
#include "ui/FlatButton.h"
#include "ui/FlatSwitch.h"
#include "ui/HairlineView.h"
#include "ui/MapView.h"
#include "ui/ViewHelpers.h"
#include "ui/ViewLayer.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// A white card with rounded corners that holds one panel of the gallery.
class Card : public QWidget
{
public:
    Card(const QString &title, QWidget *parent = nullptr) : QWidget(parent)
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(16, 12, 16, 16);
        layout->setSpacing(10);
        auto *heading = new QLabel(title);
        QFont font = heading->font();
        font.setBold(true);
        font.setPixelSize(15);
        heading->setFont(font);
        QPalette palette = heading->palette();
        palette.setColor(QPalette::WindowText, ColorPalette::midnightBlueColor());
        heading->setPalette(palette);
        layout->addWidget(heading);
        HairlineView *rule = ViewHelpers::onePixelHeightViewWithWidth(10);
        ViewHelpers::setColor(rule, ColorPalette::silverColor());
        rule->setFixedHeight(1);
        layout->addWidget(rule);
    }

    void add(QWidget *content, int stretch = 0)
    {
        static_cast<QVBoxLayout *>(layout())->addWidget(content, stretch);
    }
    // keeps the content at the top when the card is taller than it needs
    void finish() { static_cast<QVBoxLayout *>(layout())->addStretch(1); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath path;
        path.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 10, 10);
        painter.fillPath(path, ColorPalette::whiteColor());
        painter.setPen(QPen(ColorPalette::silverColor(), 1));
        painter.drawPath(path);
    }
};

QLabel *caption(const QString &text, int pixelSize = 12)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setPixelSize(pixelSize);
    label->setFont(font);
    label->setAlignment(Qt::AlignCenter);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, ColorPalette::asbestosColor());
    label->setPalette(palette);
    return label;
}

// A stand-in for a screen's content under an overlay: a top bar, a few
// text lines and a map-coloured block.
class ScreenStub : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath frame;
        frame.addRoundedRect(QRectF(rect()), 8, 8);
        painter.setClipPath(frame);
        painter.fillRect(rect(), ColorPalette::cloudsColor());
        painter.fillRect(QRect(0, 0, width(), 24), ColorPalette::turquoiseColor());
        painter.setPen(Qt::NoPen);
        painter.setBrush(ColorPalette::silverColor());
        for (int i = 0; i < 3; ++i)
            painter.drawRoundedRect(QRectF(12, 36 + i * 14, width() - 24 - i * 22, 7), 3, 3);
        painter.fillRect(QRect(0, height() - 70, width(), 70), ColorPalette::landColor());
        painter.setPen(QPen(ColorPalette::peterRiverColor(), 3));
        painter.drawLine(QPointF(10, height() - 20), QPointF(width() - 30, height() - 55));
    }
};

FlatSwitch *makeSwitch(QWidget *parent)
{
    auto *control = new FlatSwitch(QRect(0, 0, 80, 30), parent);
    control->setFixedSize(80, 30);
    return control;
}

} // namespace

Gallery::Gallery(TileSource *tiles, QWidget *parent) : QWidget(parent), m_tiles(tiles)
{
    setWindowTitle(tr("Trekmime gallery"));
    ViewHelpers::setColor(this, ColorPalette::cloudsColor());
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(18, 18, 18, 18);
    grid->setSpacing(14);
    grid->addWidget(switchesPanel(), 0, 0);
    grid->addWidget(buttonsPanel(), 0, 1);
    grid->addWidget(palettePanel(), 1, 0, 1, 2);
    grid->addWidget(overlaysPanel(), 2, 0, 1, 2);
    grid->addWidget(mapPanel(), 0, 2, 3, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
    resize(1240, 800);
}

QWidget *Gallery::switchesPanel()
{
    auto *card = new Card(tr("FlatSwitch"));
    auto *row = new QWidget;
    auto *layout = new QGridLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(14);

    FlatSwitch *on = makeSwitch(row);
    FlatSwitch *off = makeSwitch(row);
    off->setOn(false);
    FlatSwitch *half = makeSwitch(row);
    // laying a switch out re-applies its value, so the in-between position
    // is set once the window has been laid out
    QTimer::singleShot(0, half, [half] { half->setPercentOn(0.5); });
    FlatSwitch *custom = makeSwitch(row);
    custom->setOnBackgroundColor(ColorPalette::peterRiverColor());
    custom->setOffBackgroundColor(ColorPalette::wetAsphaltColor());
    custom->setOnColor(ColorPalette::whiteColor());
    custom->setOffColor(ColorPalette::silverColor());
    custom->setOn(false);

    const QList<QPair<FlatSwitch *, QString>> switches = {
        {on, tr("on")}, {off, tr("off")}, {half, tr("half way")}, {custom, tr("own colours")}};
    for (int i = 0; i < switches.size(); ++i) {
        // a switch is known by its caption, as a screen would name it by its setting
        switches[i].first->setAccessibleName(tr("Switch %1").arg(switches[i].second));
        layout->addWidget(switches[i].first, 0, i, Qt::AlignCenter);
        layout->addWidget(caption(switches[i].second), 1, i);
    }
    card->add(row);

    auto *events = caption(tr("tap or drag a switch"));
    for (FlatSwitch *control : {on, off, half, custom}) {
        connect(control, &FlatSwitch::valueChanged, events, [events](bool value) {
            events->setText(value ? tr("value changed: ON") : tr("value changed: OFF"));
        });
    }
    card->add(events);
    card->finish();
    return card;
}

QWidget *Gallery::buttonsPanel()
{
    auto *card = new Card(tr("FlatButton"));
    auto *row = new QWidget;
    auto *layout = new QGridLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(10);
    struct Style
    {
        QString title;
        QColor color;
        QColor shadow;
        QString note;
        bool pressed;
    };
    const QList<Style> styles = {
        {tr("Spotmime"), ColorPalette::turquoiseColor(), ColorPalette::greenSeaColor(),
         tr("normal"), false},
        {tr("Trekmime"), ColorPalette::peterRiverColor(), ColorPalette::belizeHoleColor(),
         tr("normal"), false},
        {tr("Search"), ColorPalette::carrotColor(), ColorPalette::pumpkinColor(), tr("pressed"),
         true},
        {tr("Delete"), ColorPalette::alizarinColor(), ColorPalette::pomegranateColor(),
         tr("normal"), false},
    };
    for (int i = 0; i < styles.size(); ++i) {
        auto *button = new FlatButton(row);
        button->setText(styles[i].title);
        button->setButtonColor(styles[i].color);
        button->setShadowColor(styles[i].shadow);
        button->setShadowHeight(3);
        button->setCornerRadius(6);
        button->setMinimumSize(92, 40);
        if (styles[i].pressed)
            button->setHighlighted(true);
        layout->addWidget(button, 0, i);
        layout->addWidget(caption(styles[i].note), 1, i);
    }
    card->add(row);
    card->finish();
    return card;
}

QWidget *Gallery::palettePanel()
{
    auto *card = new Card(tr("Palette"));
    auto *swatches = new QWidget;
    auto *layout = new QGridLayout(swatches);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(8);
    layout->setVerticalSpacing(4);
    const QList<QPair<QString, QColor>> colours = {
        {QStringLiteral("turquoise"), ColorPalette::turquoiseColor()},
        {QStringLiteral("emerland"), ColorPalette::emerlandColor()},
        {QStringLiteral("peterRiver"), ColorPalette::peterRiverColor()},
        {QStringLiteral("amethyst"), ColorPalette::amethystColor()},
        {QStringLiteral("wetAsphalt"), ColorPalette::wetAsphaltColor()},
        {QStringLiteral("sunflower"), ColorPalette::sunflowerColor()},
        {QStringLiteral("carrot"), ColorPalette::carrotColor()},
        {QStringLiteral("alizarin"), ColorPalette::alizarinColor()},
        {QStringLiteral("clouds"), ColorPalette::cloudsColor()},
        {QStringLiteral("concrete"), ColorPalette::concreteColor()},
        {QStringLiteral("greenSea"), ColorPalette::greenSeaColor()},
        {QStringLiteral("nephritis"), ColorPalette::nephritisColor()},
        {QStringLiteral("belizeHole"), ColorPalette::belizeHoleColor()},
        {QStringLiteral("wisteria"), ColorPalette::wisteriaColor()},
        {QStringLiteral("midnightBlue"), ColorPalette::midnightBlueColor()},
        {QStringLiteral("tangerine"), ColorPalette::tangerineColor()},
        {QStringLiteral("pumpkin"), ColorPalette::pumpkinColor()},
        {QStringLiteral("pomegranate"), ColorPalette::pomegranateColor()},
        {QStringLiteral("silver"), ColorPalette::silverColor()},
        {QStringLiteral("asbestos"), ColorPalette::asbestosColor()},
    };
    for (int i = 0; i < colours.size(); ++i) {
        QWidget *swatch = ViewHelpers::viewWithColor(colours[i].second, QRect(0, 0, 60, 34));
        swatch->setMinimumSize(52, 34);
        ViewLayer *layer = ViewLayer::of(swatch);
        layer->setCornerRadius(6);
        layer->setMasksToBounds(true);
        const int row = (i / 10) * 2;
        layout->addWidget(swatch, row, i % 10);
        layout->addWidget(caption(colours[i].first, 10), row + 1, i % 10);
    }
    card->add(swatches);
    card->finish();
    return card;
}

QWidget *Gallery::overlaysPanel()
{
    auto *card = new Card(tr("ProgressHUD"));
    auto *row = new QWidget;
    auto *layout = new QGridLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(12);
    layout->setRowStretch(0, 1);
    const QStringList notes = {tr("0 spinner, dimmed"), tr("1 pie"), tr("2 ring"),
                               tr("3 custom view"), tr("4 text only")};
    for (int mode = 0; mode <= ProgressHUD::Text; ++mode) {
        auto *host = new ScreenStub;
        host->setMinimumSize(140, 200);
        layout->addWidget(host, 0, mode);
        layout->addWidget(caption(notes[mode]), 1, mode);
        ProgressHUD *hud = ProgressHUD::showHUDAddedTo(host, false);
        hud->setMode(mode);
        switch (mode) {
        case ProgressHUD::Indeterminate:
            hud->setLabelText(tr("Loading"));
            hud->setDimBackground(true);
            break;
        case ProgressHUD::Determinate:
            hud->setProgress(0.35f);
            hud->setLabelText(tr("35%"));
            break;
        case ProgressHUD::AnnularDeterminate:
            hud->setProgress(0.7f);
            hud->setLabelText(tr("70%"));
            hud->setDetailsLabelText(tr("route points"));
            break;
        case ProgressHUD::CustomView: {
            auto *tick = new QLabel(QStringLiteral("\u2713"));
            QFont font = tick->font();
            font.setPixelSize(34);
            font.setBold(true);
            tick->setFont(font);
            tick->setAlignment(Qt::AlignCenter);
            QPalette palette = tick->palette();
            palette.setColor(QPalette::WindowText, ColorPalette::whiteColor());
            tick->setPalette(palette);
            tick->resize(37, 37);
            hud->setCustomView(tick);
            hud->setLabelText(tr("Saved"));
            break;
        }
        case ProgressHUD::Text:
            hud->setLabelText(tr("Hint text"));
            hud->setMargin(10.0f);
            hud->setYOffset(40.0f);
            break;
        default:
            break;
        }
    }
    card->add(row, 1);
    return card;
}

QWidget *Gallery::mapPanel()
{
    auto *card = new Card(tr("MapView"));
    auto *map = new MapView;
    map->setMinimumSize(360, 560);
    // a drive across a city, a few kilometres
    const QList<Coordinate> route = {
        {52.5163, 13.3777}, {52.5170, 13.3890}, {52.5190, 13.3990},
        {52.5215, 13.4095}, {52.5190, 13.4180}, {52.5150, 13.4250},
        {52.5105, 13.4320}, {52.5070, 13.4440}, {52.5035, 13.4500},
    };
    map->addOverlay(std::make_shared<MapPolyline>(route));
    map->addAnnotation(
        std::make_shared<MapPointAnnotation>(route.first(), RouteStartAnnotationTag, tr("Start")));
    map->addAnnotation(
        std::make_shared<MapPointAnnotation>(route.last(), RouteEndAnnotationTag, tr("End")));
    map->setRegion(CoordinateRegion{{52.5125, 13.4140}, {0.03, 0.09}});
    map->setTileSource(m_tiles);
    card->add(map, 1);
    card->add(caption(m_tiles ? tr("tiles from the configured source")
                              : tr("no tile source: the background grid")));
    return card;
}

bool Gallery::saveScreenshot(const QString &path)
{
    return grab().save(path, "PNG");
}
