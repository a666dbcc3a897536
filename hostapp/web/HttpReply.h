#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <utility>
#include <vector>

/// One answer of the server, before it is sent. A value; any thread.
namespace plotix {

struct HttpReply {
    unsigned status = 200;
    QByteArray contentType = "text/html; charset=utf-8";
    QByteArray body;
    std::vector<std::pair<QByteArray, QByteArray>> headers;  ///< beside those that every answer has
    enum class Policy { Page, Document };
    Policy policy = Policy::Page;  ///< Document: something a browser shows by itself, such as a picture
};

/// A short page that says why there is no other answer.
HttpReply plainReply(unsigned status, const char* title, const char* text);

HttpReply notFoundReply();
HttpReply methodNotAllowedReply();
HttpReply unauthorizedReply();
HttpReply wrongHostReply();
HttpReply badRequestReply();
HttpReply badRangeReply(const QString& problem);  ///< a sentence
HttpReply busyReply();
HttpReply tooManyGuessesReply(int seconds);  ///< until the next try is looked at
HttpReply addressTooLongReply();
HttpReply headersTooLargeReply();
HttpReply redirectReply(unsigned status, const QByteArray& location);

/// The headers of every answer: no content sniffing, no referrer, no script, no framing by others, no caching.
std::vector<std::pair<QByteArray, QByteArray>> protectiveHeaders(HttpReply::Policy policy);

}  // namespace plotix
