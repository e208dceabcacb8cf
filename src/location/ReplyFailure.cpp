#include "location/ReplyFailure.h"

#include <QCoreApplication>
#include <QNetworkReply>

std::optional<QString> replyFailure(const QNetworkReply &reply, const QString &service)
{
    const QNetworkReply::NetworkError error = reply.error();
    if (error == QNetworkReply::TooManyRedirectsError)
        return QCoreApplication::translate("ReplyFailure",
                                           "The request to %1 was redirected in a loop (%2).")
            .arg(service, reply.url().toString());
    if (error == QNetworkReply::InsecureRedirectError)
        return QCoreApplication::translate(
                   "ReplyFailure", "The request to %1 was redirected to an insecure address.")
            .arg(service);
    const bool answered = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
    if (!answered)
        return QCoreApplication::translate("ReplyFailure", "Cannot reach %1: %2")
            .arg(service, reply.errorString());
    // errors of the transfer itself (as opposed to an HTTP status the
    // service chose) after the head came
    const bool transfer = (error >= QNetworkReply::ConnectionRefusedError &&
                           error <= QNetworkReply::UnknownNetworkError) ||
                          error == QNetworkReply::ProtocolFailure;
    if (transfer)
        return QCoreApplication::translate(
                   "ReplyFailure",
                   "The connection to %1 broke off before its whole answer came: %2")
            .arg(service, reply.errorString());
    return std::nullopt;
}
