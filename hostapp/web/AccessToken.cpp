#include "hostapp/web/AccessToken.h"

#include "base/ReportableError.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>

namespace plotix {

namespace {

QByteArray randomText()
{
    quint32 words[8];
    QRandomGenerator::system()->fillRange(words);
    return QByteArray(reinterpret_cast<const char*>(words), sizeof words).toHex();
}

}  // namespace

AccessToken::AccessToken(QByteArray token, QByteArray cookieName)
    : m_token(std::move(token)), m_cookieName(std::move(cookieName)), m_cookieValue(randomText())
{
}

QByteArray AccessToken::readFrom(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ReportableError(QStringLiteral("The token file %1 cannot be read: %2").arg(path, file.errorString()));
    constexpr qint64 kLongest = 1024;  // bytes; a huge file named by mistake is refused at once
    const QByteArray token = file.readLine(kLongest).trimmed();
    if (token.isEmpty())
        throw ReportableError(QStringLiteral("The token file %1 is empty; its first line is the token.").arg(path));
    if (token.size() < kShortest)
        throw ReportableError(QStringLiteral("The token in %1 is too short; give its first line %2 characters or more.")
                                  .arg(path)
                                  .arg(kShortest));
    return token;
}

bool AccessToken::matches(const QByteArray& token) const
{
    return equalInConstantTime(m_token, token);
}

bool AccessToken::matchesAuthorization(const QByteArray& header) const
{
    const qsizetype blank = header.indexOf(' ');
    return blank > 0 && header.left(blank).toLower() == "bearer" && matches(header.mid(blank + 1).trimmed());
}

bool AccessToken::matchesCookies(const QByteArray& header) const
{
    bool found = false;
    for (const QByteArray& cookie : header.split(';')) {
        const QByteArray pair = cookie.trimmed();
        if (pair.startsWith(m_cookieName + '='))
            found |= equalInConstantTime(m_cookieValue, pair.mid(m_cookieName.size() + 1));
    }
    return found;
}

QByteArray AccessToken::cookie() const
{
    // Lax, not Strict: a link in a mail must work, and requests change nothing here.
    return m_cookieName + '=' + m_cookieValue + "; Path=/; HttpOnly; SameSite=Lax";
}

bool equalInConstantTime(const QByteArray& expected, const QByteArray& given)
{
    // All digests have the same length, and comparing them reveals nothing of the texts.
    const QByteArray left = QCryptographicHash::hash(expected, QCryptographicHash::Sha256);
    const QByteArray right = QCryptographicHash::hash(given, QCryptographicHash::Sha256);
    int difference = 0;
    for (qsizetype index = 0; index < left.size(); ++index)
        difference |= left[index] ^ right[index];
    return difference == 0;
}

}  // namespace plotix
