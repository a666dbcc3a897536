#include "hostapp/cli/TerminalText.h"

#include <QtCore/QString>

#include <algorithm>
#include <array>
#include <cstdio>

namespace plotix {

namespace {

/// Controls, and what marks or changes the direction of writing.
bool isHarmful(char32_t character)
{
    constexpr std::array<std::pair<char32_t, char32_t>, 8> kHarmful = {{{0x00, 0x08},
                                                                        {0x0b, 0x1f},
                                                                        {0x7f, 0x9f},
                                                                        {0x061c, 0x061c},
                                                                        {0x200e, 0x200f},
                                                                        {0x2028, 0x202e},
                                                                        {0x2066, 0x2069},
                                                                        {0xfff9, 0xfffb}}};
    for (const auto& [first, last] : kHarmful)
        if (character >= first && character <= last)
            return true;
    return false;
}

/// How many bytes a character has that begins so; 1 for what begins none.
std::size_t lengthFrom(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    return byte >= 0xf0 && byte < 0xf8 ? 4 : byte >= 0xe0 ? (byte < 0xf0 ? 3 : 1) : byte >= 0xc2 ? 2 : 1;
}

/// The bytes at the end that begin a character and do not end it.
std::size_t unfinished(std::string_view text)
{
    for (std::size_t back = 1; back <= std::min<std::size_t>(3, text.size()); ++back) {
        const char byte = text[text.size() - back];
        if ((static_cast<unsigned char>(byte) & 0xc0U) != 0x80U)
            return lengthFrom(byte) > back ? back : 0;
    }
    return 0;
}

}  // namespace

std::string countText(std::size_t count, const char* one, const char* several)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string sizeText(long long bytes)
{
    double size = static_cast<double>(bytes);
    const char* unit = " bytes";
    for (const char* larger : {" KB", " MB", " GB", " TB"}) {
        if (size < 999.95)
            break;
        size /= 1000;
        unit = larger;
    }
    return QString::number(size, 'f', bytes < 1000 ? 0 : 1).toStdString() + unit;
}

std::string harmlessText(std::string_view text)
{
    std::string shown;
    shown.reserve(text.size());
    for (const char32_t character :
         QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toStdU32String()) {
        if (isHarmful(character)) {
            std::array<char, 8> written{};
            std::snprintf(written.data(), written.size(), "\\u%04x", static_cast<unsigned>(character));
            shown += written.data();
        } else {
            shown += QString::fromUcs4(&character, 1).toStdString();
        }
    }
    return shown;
}

int HarmlessStream::overflow(int byte)
{
    if (byte != std::streambuf::traits_type::eof()) {
        m_held += static_cast<char>(byte);
        passOn(false);
    }
    return 0;
}

std::streamsize HarmlessStream::xsputn(const char* text, std::streamsize size)
{
    m_held.append(text, static_cast<std::size_t>(size));
    passOn(false);
    return size;
}

int HarmlessStream::sync()
{
    passOn(true);
    m_to.flush();
    return m_to ? 0 : -1;
}

void HarmlessStream::passOn(bool all)
{
    const std::size_t rest = all ? 0 : unfinished(m_held);
    const std::size_t whole = m_held.size() - rest;
    const bool isPlain = std::all_of(m_held.begin(), m_held.begin() + static_cast<std::ptrdiff_t>(whole),
                                     [](char byte) { return (byte >= ' ' && byte < 0x7f) || byte == '\n'; });
    if (isPlain)
        m_to.write(m_held.data(), static_cast<std::streamsize>(whole));
    else
        m_to << harmlessText(std::string_view(m_held).substr(0, whole));
    m_held.erase(0, whole);
}

}  // namespace plotix
