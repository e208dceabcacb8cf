#pragma once

#include <QString>

#include <optional>

class QNetworkReply;

// How a finished web request went wrong on the way, in words a person can
// act on, or nothing when it came back whole (an HTTP error status is then
// the service's own answer, for the caller to read). `service` names the
// service in a sentence ("the routing service"). A connection that breaks
// off after the head is told apart from one never made, and a redirect loop
// is named as one, since "not the expected JSON" would only mislead.
std::optional<QString> replyFailure(const QNetworkReply &reply, const QString &service);
