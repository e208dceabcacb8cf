#include "GoldenFile.h"

#include <QFile>
#include <QProcess>

namespace GoldenFile {

QByteArray read(const QString &name)
{
    QFile file(QStringLiteral(GOLDEN_DIR "/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString compare(const QString &name, const QByteArray &actual)
{
    const QString reference = QStringLiteral(GOLDEN_DIR "/") + name;
    const QByteArray expected = read(name);
    if (expected == actual && !expected.isEmpty())
        return {};
    const QString actualPath = reference + QStringLiteral(".actual");
    QFile out(actualPath);
    if (out.open(QIODevice::WriteOnly))
        out.write(actual);
    out.close();
    QProcess diff;
    diff.start(QStringLiteral("diff"), {QStringLiteral("-u"), reference, actualPath});
    diff.waitForFinished(5000);
    return QStringLiteral("%1 differs from its reference:\n%2")
        .arg(name, QString::fromUtf8(diff.readAllStandardOutput()));
}

} // namespace GoldenFile
