#include "ui/Theme.h"

#include "ui/ColorPalette.h"

#include <QApplication>
#include <QRegularExpression>

#include <initializer_list>

namespace {

struct Rule
{
    const char *selectors; // comma-separated, as in a style sheet
    const char *declarations;
};

// "{name}" in the declarations stands for the palette colour of that name,
// "{name/alpha}" for the same colour at an alpha of 0 to 255
QString colourFor(const QString &name)
{
    static const QList<std::pair<const char *, const QColor &(*)()>> colours = {
        {"turquoise", &ColorPalette::turquoiseColor},
        {"greenSea", &ColorPalette::greenSeaColor},
        {"peterRiver", &ColorPalette::peterRiverColor},
        {"wetAsphalt", &ColorPalette::wetAsphaltColor},
        {"midnightBlue", &ColorPalette::midnightBlueColor},
        {"clouds", &ColorPalette::cloudsColor},
        {"silver", &ColorPalette::silverColor},
        {"concrete", &ColorPalette::concreteColor},
        {"asbestos", &ColorPalette::asbestosColor},
        {"white", &ColorPalette::whiteColor},
        {"black", &ColorPalette::blackColor},
        {"selection", &ColorPalette::selectionColor},
        {"divider", &ColorPalette::dividerColor},
    };
    const QString colour = name.section(u'/', 0, 0);
    const QString alpha = name.section(u'/', 1, 1);
    for (const auto &[key, make] : colours) {
        if (colour != QLatin1String(key))
            continue;
        const QColor &c = make();
        if (alpha.isEmpty())
            return c.name();
        return QStringLiteral("rgba(%1, %2, %3, %4)")
            .arg(c.red())
            .arg(c.green())
            .arg(c.blue())
            .arg(alpha);
    }
    qFatal("no palette colour named %s", qPrintable(colour));
}

QString filled(const char *declarations)
{
    static const QRegularExpression placeholder(QStringLiteral("\\{([A-Za-z]+(/\\d+)?)\\}"));
    QString text = QString::fromLatin1(declarations);
    QString result;
    qsizetype from = 0;
    for (auto match = placeholder.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch m = match.next();
        result += QStringView(text).mid(from, m.capturedStart() - from);
        result += colourFor(m.captured(1));
        from = m.capturedEnd();
    }
    result += QStringView(text).mid(from);
    return result;
}

// Appends the rules with every selector placed inside the scope.
void addScreen(QString &sheet, const QString &scope, std::initializer_list<Rule> rules)
{
    for (const Rule &rule : rules) {
        QStringList selectors;
        for (const QString &selector : QString::fromLatin1(rule.selectors).split(u','))
            selectors.append(scope + u' ' + selector.trimmed());
        sheet += selectors.join(QStringLiteral(", ")) + QStringLiteral(" { ") +
                 filled(rule.declarations) + QStringLiteral(" }\n");
    }
}

void addRouteScreen(QString &sheet)
{
    addScreen(
        sheet, QStringLiteral("TrekmimeViewController"),
        {
            {"QWidget#v_top", "background: {white};"},
            {"QPushButton[choiceRow=\"true\"]",
             "background: {white}; border: none; border-bottom: 1px solid {clouds};"
             " text-align: left;"},
            {"QPushButton[choiceRow=\"true\"]:pressed", "background: {clouds};"},
            {"QPushButton[choiceRow=\"true\"]:focus", "background: {selection};"},
            {"QLabel[caption=\"true\"]", "color: {concrete}; font-size: 13px;"},
            {"QLabel[value=\"true\"]", "color: {midnightBlue}; font-size: 16px; font-weight: 600;"},
            {"QLabel#chevron", "color: {silver}; font-size: 18px;"},
            {"QWidget#stopRow, QWidget#paceRow, QWidget#evenPaceRow",
             "background: {white}; border-bottom: 1px solid {clouds};"},
            {"QLabel#stopAddress", "font-size: 15px;"},
            {"QPushButton#removeStopButton",
             "color: {concrete}; background: transparent; border: none; border-radius: 18px;"
             " font-size: 16px;"},
            {"QPushButton#removeStopButton:pressed", "background: {clouds};"},
            {"QPushButton#removeStopButton:focus", "background: {selection};"},
            {"QPushButton#addStopButton",
             "color: {peterRiver}; background: {white}; border: none;"
             " border-bottom: 1px solid {clouds}; text-align: left; padding-left: 108px;"
             " font-size: 15px; font-weight: 600;"},
            {"QPushButton#addStopButton:pressed", "background: {clouds};"},
            {"QPushButton#addStopButton:focus", "background: {selection};"},
            {"QComboBox#paceChoice",
             "color: {midnightBlue}; background: {white}; border: 1px solid {silver};"
             " border-radius: 6px; padding: 0 8px; font-size: 14px;"},
            {"QComboBox#paceChoice:focus", "border: 2px solid {turquoise};"},
            {"QComboBox#paceChoice::drop-down", "border: none; width: 24px;"},
            {"QLabel#paceArrow", "color: {concrete}; font-size: 14px;"},
            {"QWidget#strip", "background: {midnightBlue};"},
            {"QLabel#titleLabel", "color: {clouds}; font-size: 19px; font-weight: 700;"},
            {"QPushButton#btn_upDown, QPushButton#btn_info",
             "color: {clouds}; background: {wetAsphalt}; border: none; border-radius: 17px;"
             " font-size: 17px; font-weight: 700;"},
            {"QPushButton#btn_upDown:pressed, QPushButton#btn_info:pressed",
             "background: {turquoise};"},
            {"QPushButton#btn_upDown:focus, QPushButton#btn_info:focus",
             "border: 2px solid {turquoise};"},
            {"QPushButton#btn_gpx",
             "color: {clouds}; background: {wetAsphalt}; border: none; border-radius: 17px;"
             " font-size: 14px; font-weight: 600; padding: 0 14px;"},
            {"QPushButton#btn_gpx:pressed", "background: {turquoise};"},
            {"QPushButton#btn_gpx:focus", "border: 2px solid {turquoise};"},
            {"QWidget#bottomView", "background: {white}; border-top: 1px solid {silver};"},
            {"QLabel#statusBacking", "background: {midnightBlue};"},
            {"QLabel#lb_tip", "color: {greenSea}; font-size: 13px; font-weight: 600;"},
            {"QPushButton#btn_exchange",
             "background: {turquoise}; color: {clouds}; border: none; border-radius: 8px;"
             " font-size: 15px; font-weight: 600; padding: 8px 12px;"},
            {"QPushButton#btn_exchange:pressed", "background: {greenSea};"},
            {"QPushButton#btn_exchange:focus", "border: 2px solid {midnightBlue};"},
            {"QPushButton#btn_mine",
             "background: {white}; border: 1px solid {silver}; border-radius: 24px;"},
            {"QPushButton#btn_mine:pressed", "background: {clouds};"},
            {"QPushButton#btn_picker", "border: none;"},
            {"QWidget#pickerSheet",
             "background: {white}; border-top-left-radius: 14px; border-top-right-radius: 14px;"},
            {"QLabel#pickerTitle", "color: {midnightBlue}; font-size: 16px; font-weight: 700;"},
            {"QPushButton#pickerDone",
             "color: {greenSea}; background: transparent; border: none; font-size: 16px;"
             " font-weight: 700; padding: 6px 10px;"},
            {"QPushButton#pickerDone:focus", "color: {turquoise}; text-decoration: underline;"},
        });
}

void addAddressPicker(QString &sheet)
{
    addScreen(
        sheet, QStringLiteral("SelectAddressViewController"),
        {
            {"QLabel#bgLabel, QWidget#topView, QWidget#bottomView", "background: {midnightBlue};"},
            {"QLineEdit#searchField",
             "background: {white}; border: 2px solid {clouds}; border-radius: 6px;"
             " padding: 4px 10px; font-size: 16px; color: {midnightBlue};"},
            {"QLineEdit#searchField:focus", "border-color: {turquoise};"},
            {"QWidget#addressCard",
             "background: {white}; border-radius: 10px; border: 1px solid {silver};"},
            {"QLabel#addressLabel", "color: {midnightBlue}; font-size: 15px; font-weight: 600;"},
            {"QPushButton#btn_mine",
             "background: {white}; border: 1px solid {silver}; border-radius: 22px;"
             " color: {peterRiver}; font-size: 20px;"},
            {"QPushButton#btn_mine:pressed", "background: {clouds};"},
        });
}

void addSpotScreen(QString &sheet)
{
    addScreen(
        sheet, QStringLiteral("SpotmimeViewController"),
        {
            {"QWidget#topView, QLabel#bgLabel", "background: {midnightBlue};"},
            {"QWidget#bottomView", "background: {clouds}; border-top: 1px solid {silver};"},
            {"QLineEdit#searchField",
             "background: {white}; color: {midnightBlue}; border: none; border-radius: 6px;"
             " padding: 0 10px; font-size: 15px;"},
            {"QLabel#addressLabel", "color: {midnightBlue}; font-size: 14px;"},
            {"QLabel#lb_location",
             "background: {white/225}; color: {midnightBlue}; border-radius: 8px;"
             " padding: 4px 10px; font-family: monospace; font-size: 13px;"},
            {"QPushButton#btn_mine",
             "background: {white}; border: 1px solid {silver}; border-radius: 22px;"},
            {"QPushButton#btn_mine:pressed", "background: {clouds};"},
            {"QPushButton#btn_exchange",
             "background: {midnightBlue}; color: {clouds}; border: none; font-size: 15px;"
             " font-weight: 600; padding: 0 16px;"},
            {"QPushButton#btn_exchange:pressed", "background: {wetAsphalt};"},
            {"QPushButton#infoButton", "background: transparent; border: none;"},
            {"QWidget#alertView", "background: {midnightBlue/150};"},
            {"QWidget#alertCard", "background: {white}; border-radius: 10px;"},
            {"QLabel#alertTitleLabel", "color: {midnightBlue}; font-size: 17px; font-weight: 600;"},
            {"QLineEdit#favoritesNameField",
             "background: {clouds}; color: {midnightBlue}; border: 1px solid {silver};"
             " border-radius: 6px; padding: 0 10px; font-size: 15px;"},
        });
}

void addFavoritesScreen(QString &sheet)
{
    addScreen(sheet, QStringLiteral("FavoritesViewController"),
              {
                  {"QWidget#topView, QLabel#bgLabel", "background: {midnightBlue};"},
                  {"QLabel#titleLabel", "color: {clouds}; font-size: 19px; font-weight: 600;"},
                  {"QWidget#bottomView", "background: {clouds}; border-top: 1px solid {silver};"},
                  {"QLabel#titleTopLabel", "color: {concrete}; font-size: 13px;"},
              });
}

// the information and whitelist screens share their top and bottom bars
void addModalScreen(QString &sheet, const QString &screen)
{
    addScreen(sheet, screen,
              {
                  {"QLabel#bgLabel, QWidget#topView", "background: {midnightBlue};"},
                  {"QLabel#titleTopLabel", "color: {clouds}; font-size: 19px; font-weight: 600;"},
                  {"QWidget#bottomView", "background: {clouds}; border-top: 1px solid {divider};"},
              });
}

} // namespace

QString Theme::styleSheet()
{
    QString sheet;
    addRouteScreen(sheet);
    addAddressPicker(sheet);
    addSpotScreen(sheet);
    sheet += QStringLiteral("QWidget#FavoritesViewController { ") + filled("background: {white};") +
             QStringLiteral(" }\n");
    addFavoritesScreen(sheet);

    sheet += QStringLiteral("InfoViewController { ") + filled("background: {clouds};") +
             QStringLiteral(" }\n");
    addModalScreen(sheet, QStringLiteral("InfoViewController"));
    addScreen(sheet, QStringLiteral("InfoViewController"),
              {{"QLabel#titleLabel", "color: {midnightBlue}; font-size: 30px; font-weight: 700;"}});

    sheet += QStringLiteral("WhitelistViewController { ") + filled("background: {clouds};") +
             QStringLiteral(" }\n");
    addModalScreen(sheet, QStringLiteral("WhitelistViewController"));
    addScreen(sheet, QStringLiteral("WhitelistViewController"),
              {
                  {"QLabel#titleLabel", "color: {asbestos}; font-size: 13px; font-weight: 600;"
                                        " padding: 14px 16px 6px 16px; background: {clouds};"},
                  {"QScrollArea#mainTableView, QWidget#rows", "background: {white}; border: none;"},
              });
    return sheet;
}

void Theme::apply(QApplication &application)
{
    application.setStyleSheet(styleSheet());
}

QString Theme::backdropStyleSheet(double opacity)
{
    return QStringLiteral("QPushButton { border: none; background: %1; }")
        .arg(colourFor(QStringLiteral("black/%1").arg(int(opacity * 255))));
}
