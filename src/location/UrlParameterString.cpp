#include "location/UrlParameterString.h"

#include <QUrl>

QByteArray encodedURLParameterString(const QString &value)
{
    // Qt leaves only the unreserved marks "-._~" and alphanumerics alone,
    // which already covers the extra set above. A percent sign is escaped
    // too: it is not legal on its own in a URL.
    return QUrl::toPercentEncoding(value);
}
