#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Who has access: everybody if there is no token, else those who know it.
///
/// A value; any thread. Comparisons take as long for a nearly right text as for a wrong one.
namespace plotix {

class AccessToken {
public:
    AccessToken() = default;

    /// `token` is known to the users, empty: open to everybody; `cookieName` tells servers on one machine apart.
    AccessToken(QByteArray token, QByteArray cookieName);

    static constexpr qsizetype kShortest = 12;  ///< bytes of a token that other machines may guess at

    /// The first line of a file, without blanks at its ends. Throws ReportableError when it cannot be read, holds none
    /// or one that is too short.
    static QByteArray readFrom(const QString& path);

    bool isRequired() const { return !m_token.isEmpty(); }

    bool matches(const QByteArray& token) const;

    /// "Bearer TOKEN", the scheme in any case.
    bool matchesAuthorization(const QByteArray& header) const;

    /// The Cookie header of a request; ours may stand among others.
    bool matchesCookies(const QByteArray& header) const;

    /// The value of Set-Cookie. The cookie does not hold the token, but proves that it was known; it ends with the
    /// server.
    QByteArray cookie() const;

private:
    QByteArray m_token, m_cookieName, m_cookieValue;
};

/// Whether both are equal; the time it takes depends only on the length of `given`.
bool equalInConstantTime(const QByteArray& expected, const QByteArray& given);

}  // namespace plotix
