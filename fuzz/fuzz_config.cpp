// The configuration file as the start-up reads it (QSettings' INI reader,
// then each setting checked and typed). QSettings keeps files it has read by
// name and reads one again only when its size or time changed, so each input
// gets a file name of its own in this process's folder.

#include "FuzzInput.h"

#include "platform/Configuration.h"

#include <QFile>
#include <QProcessEnvironment>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QTemporaryDir folder;
    static quint64 inputs = 0;
    const QString path = folder.filePath(QStringLiteral("%1.conf").arg(++inputs));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(fuzzBytes(data, size)) != qint64(size))
        __builtin_trap(); // the folder must take the file, or nothing is tested
    file.close();
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("TREKMIME_CONFIG"), path);
    Configuration configuration;
    QString error;
    volatile bool loaded = Configuration::load(nullptr, environment, configuration, &error);
    (void)loaded;
    QFile::remove(path);
    return 0;
}
