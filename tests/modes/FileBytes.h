#pragma once

#include <QFile>

// A file's bytes, empty when it cannot be read: the mode tests prove a refused
// change leaves a file exactly as it was.
inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
