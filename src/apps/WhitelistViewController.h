#pragma once

#include "applications/ApplicationModel.h"
#include "settings/WhitelistRecord.h"

#include <QList>
#include <QWidget>

class ApplicationRegistry;
class DeviceMetrics;
class FlatButton;
class QLabel;
class QScrollArea;
class WhitelistRow;
class TMPreferenceUtil;

// Which applications receive the simulated position: every application of
// the installed list with its icon and name, checked when whitelisted. A
// tap flips one application and writes the whole whitelist file at once.
// Presented over the information screen; "Done" dismisses it. The list and
// the file are read once, when the screen is made.
class WhitelistViewController : public QWidget
{
    Q_OBJECT

public:
    // What the screen uses of the outside world; not owned, kept alive by the
    // caller. No application registry: an empty list; no device metrics:
    // the default layout.
    struct Needs
    {
        TMPreferenceUtil &preferences;
        ApplicationRegistry *applications = nullptr;
        DeviceMetrics *deviceMetrics = nullptr;
    };

    explicit WhitelistViewController(const Needs &needs, QWidget *parent = nullptr);

    const QList<ApplicationModel> &appArray() const { return m_appArray; }
    const WhitelistRecord &whiteListPreferences() const { return m_whiteListPreferences; }

    int numberOfRows() const { return int(m_appArray.size()); }
    WhitelistRow *rowAt(int row) const { return m_rows.value(row); }
    // What a tap on a row does: the record's flag flipped (true when never
    // tapped), the whole file written, the mark set.
    void didSelectRow(int row);

public slots:
    void done();

protected:
    void resizeEvent(QResizeEvent *event) override;
    // Escape closes the screen, as its back button does
    void keyPressEvent(QKeyEvent *event) override;

private:
    void viewDidLoad();
    void buildRows();
    void layoutBars();

    const Needs m_needs;
    QList<ApplicationModel> m_appArray;
    WhitelistRecord m_whiteListPreferences;
    QList<WhitelistRow *> m_rows;

    FlatButton *backButton = nullptr;
    QLabel *titleLabel = nullptr;
    QLabel *titleTopLabel = nullptr;
    QScrollArea *mainTableView = nullptr;
    QLabel *bgLabel = nullptr;
    QWidget *topView = nullptr;
    QWidget *bottomView = nullptr;
};
