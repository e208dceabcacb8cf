#pragma once

#include "app/FileChoice.h"
#include "app/SafeArea.h"
#include "settings/FavoriteEntry.h"

#include <QList>
#include <QPointer>
#include <QWidget>

class AlertPresenter;
class FavoritesDelegate;
class FavoritesTableView;
class FlatButton;
class QLabel;
class DeviceMetrics;
class TMPreferenceUtil;

// The saved places, in the order of the favourites file, presented over the
// fixed-location screen. Choosing a row stores that place with faking on,
// closes the list and tells the delegate; in edit mode (or by a swipe) rows
// are deleted, each deletion rewriting the file at once.
//
// The list shows whatever the file holds: an entry without a name is shown
// as "Unknow", one that is not a place at all is shown dimmed and cannot be
// chosen, and deleting a row writes every other entry back as it was read.
// Import appends a GPX file's waypoints; Export writes the places as one.
class FavoritesViewController : public QWidget
{
    Q_OBJECT

public:
    // What the list uses of the outside world; not owned, kept alive by the
    // caller. No device metrics: the default layout; no alerts: a GPX file
    // that fails is not reported.
    struct Needs
    {
        TMPreferenceUtil &preferences;
        DeviceMetrics *deviceMetrics = nullptr;
        AlertPresenter *alerts = nullptr;
    };

    explicit FavoritesViewController(const Needs &needs, QWidget *parent = nullptr);

    // Not owned; told when a place has been chosen, unless it is gone by then.
    void setDelegate(FavoritesDelegate *delegate);
    FavoritesDelegate *delegate() const;

    // the list as loaded and edited since
    const QList<FavoriteEntry> &favorites() const { return m_favorites; }
    FavoritesTableView *tableView() const { return mainTableView; }

    // What the table does: a row chosen, a row deleted.
    void didSelectRow(int row);
    void commitDelete(int row);

    // Where Import and Export ask for their file (the file dialog by default).
    void setFileChoice(FileChoice::Function choose) { m_chooseFile = std::move(choose); }
    void importFavorites();
    void exportFavorites();

public slots:
    void done();
    void edit();

protected:
    void resizeEvent(QResizeEvent *event) override;
    // Escape closes the screen, as its back button does
    void keyPressEvent(QKeyEvent *event) override;

private:
    void viewDidLoad();
    void loadRows();
    void layoutViews();
    void report(const QString &error);

    const Needs m_needs;
    QList<FavoriteEntry> m_favorites;
    FavoritesDelegate *m_delegate = nullptr;
    FileChoice::Function m_chooseFile = FileChoice::gpxDialog;
    QPointer<QObject> m_delegateLifetime;

    FlatButton *backButton = nullptr;
    FlatButton *editButton = nullptr;
    FlatButton *importButton = nullptr;
    FlatButton *exportButton = nullptr;
    FavoritesTableView *mainTableView = nullptr;
    QLabel *titleLabel = nullptr;
    QLabel *titleTopLabel = nullptr;
    QLabel *bgLabel = nullptr;
    QWidget *topView = nullptr;
    QWidget *bottomView = nullptr;
    SafeArea m_safeArea;
};
