#include "settings/PropertyList.h"

#include "settings/PropertyListBinary.h"
#include "settings/PropertyListGuard.h"
#include "settings/PropertyListXml.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
// The root of `bytes`, or an invalid QVariant with, in `problem`, why.
QVariant parse(QByteArrayView bytes, QString *problem = nullptr)
{
    QVariant root;
    QString refusal;
    // the binary form is rare (a file some tool converted); the XML form
    // is what every writer here and the hooking component use
    if (bytes.startsWith("bplist00")) {
        // a few hundred bytes can name millions of shared values: the guard
        // counts them without building any, before the reader does
        refusal = PropertyListGuard::refusal(bytes);
        if (refusal.isEmpty())
            root = PropertyListBinary::read(bytes, PropertyListGuard::MaxDepth,
                                            PropertyListGuard::MaxValues);
    } else {
        // the reader keeps to the same depth itself; the guard's pass over
        // the text only tells why a document was refused
        root = PropertyListXml::read(bytes, PropertyListGuard::MaxDepth);
        if (!root.isValid() && problem)
            refusal = PropertyListGuard::refusal(bytes);
    }
    if (!root.isValid() && problem)
        *problem = refusal.isEmpty()
                       ? QCoreApplication::translate("PropertyList", "not a property list")
                       : refusal;
    return root;
}
} // namespace

QVariant PropertyList::fromData(const QByteArray &data)
{
    return parse(data);
}

namespace {
PropertyList::Loaded unreadable(QString problem)
{
    return {{}, PropertyList::ReadStatus::Unreadable, std::move(problem)};
}
} // namespace

PropertyList::Loaded PropertyList::load(const QString &path)
{
    // Opened without blocking, so a named pipe in place of the file cannot
    // hold the program; only then is it known to be a plain file.
    const int fd =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return {};
        return unreadable(QString::fromLocal8Bit(std::strerror(errno)));
    }
    QFile file;
    file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    struct stat info = {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode))
        return unreadable(QCoreApplication::translate("PropertyList", "not a regular file"));
    if (info.st_size > PropertyListGuard::MaxFileBytes)
        return unreadable(
            QCoreApplication::translate("PropertyList", "larger than any settings file"));
    // not mapped: a tool that rewrites the file in place would crash a
    // mapped reader, where a copy merely reads as malformed. One byte more
    // than the size found tells a file that grew meanwhile; asking for no
    // more than that keeps the buffer the file's size.
    const QByteArray data = file.read(qint64(info.st_size) + 1);
    if (data.size() > info.st_size)
        return unreadable(QCoreApplication::translate("PropertyList", "changed while it was read"));
    QString problem;
    QVariant root = parse(data, &problem);
    if (!root.isValid())
        return unreadable(problem);
    return {std::move(root), ReadStatus::Read, {}};
}

QVariant PropertyList::read(const QString &path)
{
    return load(path).root;
}

QVariantMap PropertyList::readDictionary(const QString &path)
{
    const QVariant root = read(path);
    return root.metaType().id() == QMetaType::QVariantMap ? root.toMap() : QVariantMap();
}

QVariantList PropertyList::readArray(const QString &path)
{
    const QVariant root = read(path);
    return root.metaType().id() == QMetaType::QVariantList ? root.toList() : QVariantList();
}

QByteArray PropertyList::toXml(const QVariant &root)
{
    return PropertyListXml::write(root);
}

bool PropertyList::write(const QString &path, const QVariant &root)
{
    const QByteArray text = PropertyListXml::write(root);
    if (text.isEmpty())
        return false;
    // the hooking component reads this file at any moment: replace it whole
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(text) != text.size()) {
        file.cancelWriting();
        file.commit();
        return false;
    }
    return file.commit();
}
