#pragma once

#include <QFile>

// A file's bytes, empty when it cannot be read: tests prove a refused change
// leaves a file exactly as it was.
inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Writes a whole file; false when it cannot.
inline bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}
