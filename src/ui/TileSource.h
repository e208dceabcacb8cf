#pragma once

#include "ui/TileId.h"

#include <QImage>
#include <QObject>
#include <QString>

// Where map tiles come from. A request is answered later, on the GUI
// thread, by tileLoaded or tileFailed; asking again for a tile that is
// still on its way is harmless. A busy source may give up requests that
// newer ones crowd out, without an answer: whoever still needs such a tile
// asks again.
class TileSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // the credit the map must show for these tiles, empty for none
    virtual QString attribution() const = 0;
    virtual int maximumZoom() const { return 19; }
    virtual void requestTile(const TileId &tile) = 0;

signals:
    void tileLoaded(const TileId &tile, const QImage &image);
    void tileFailed(const TileId &tile);
};
