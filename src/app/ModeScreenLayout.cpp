#include "app/ModeScreenLayout.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

QString ModeScreenLayout::modeName()
{
    return QCoreApplication::translate("ModeScreenLayout", "Mode");
}

QString ModeScreenLayout::informationName()
{
    return QCoreApplication::translate("ModeScreenLayout", "Information");
}

QString ModeScreenLayout::currentLocationName()
{
    return QCoreApplication::translate("ModeScreenLayout", "Current location");
}

ModeScreenLayout ModeScreenLayout::build(QWidget *screen, const QString &title,
                                         const QString &subtitle, const QString &otherMode)
{
    ModeScreenLayout result;
    screen->setAttribute(Qt::WA_StyledBackground);
    // the theme styles the bars of a screen marked so
    screen->setProperty("modeScreen", true);

    auto *column = new QVBoxLayout(screen);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);

    auto *topBar = new QWidget(screen);
    topBar->setObjectName(QStringLiteral("topBar"));
    topBar->setFixedHeight(64);
    auto *topRow = new QHBoxLayout(topBar);
    topRow->setContentsMargins(16, 20, 16, 0);
    result.title = new QLabel(title, topBar);
    result.title->setObjectName(QStringLiteral("titleLabel"));
    result.title->setAlignment(Qt::AlignCenter);
    topRow->addWidget(result.title);
    column->addWidget(topBar);

    result.body = new QWidget(screen);
    result.body->setObjectName(QStringLiteral("body"));
    auto *bodyColumn = new QVBoxLayout(result.body);
    bodyColumn->addStretch(1);
    auto *modeLabel = new QLabel(title, result.body);
    modeLabel->setObjectName(QStringLiteral("modeLabel"));
    modeLabel->setAlignment(Qt::AlignCenter);
    bodyColumn->addWidget(modeLabel);
    auto *subtitleLabel = new QLabel(subtitle, result.body);
    subtitleLabel->setObjectName(QStringLiteral("subtitleLabel"));
    subtitleLabel->setAlignment(Qt::AlignCenter);
    bodyColumn->addWidget(subtitleLabel);
    bodyColumn->addStretch(1);
    column->addWidget(result.body, 1);

    auto *bottomBar = new QWidget(screen);
    bottomBar->setObjectName(QStringLiteral("bottomView"));
    bottomBar->setFixedHeight(70);
    auto *bottomRow = new QHBoxLayout(bottomBar);
    bottomRow->setContentsMargins(16, 12, 16, 12);
    bottomRow->addStretch(1);
    result.exchangeButton = new QPushButton(QStringLiteral("\u21c4 ") + otherMode, bottomBar);
    result.exchangeButton->setCursor(Qt::PointingHandCursor);
    result.exchangeButton->setAccessibleName(modeName());
    result.exchangeButton->setAccessibleDescription(otherMode);
    bottomRow->addWidget(result.exchangeButton);
    column->addWidget(bottomBar);
    return result;
}
