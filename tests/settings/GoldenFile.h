#pragma once

#include <QByteArray>
#include <QString>

// Compares bytes with a reference file under tests/settings/golden. On a
// difference it writes the actual bytes beside the reference (NAME.actual)
// and answers a unified diff for the failure message.
namespace GoldenFile {
QString compare(const QString &name, const QByteArray &actual);
QByteArray read(const QString &name);
} // namespace GoldenFile
