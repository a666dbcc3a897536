#pragma once

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

/// What commands print, made harmless to terminals.
///
/// Names come from files of others. Control characters could move the cursor, recolour or rename the terminal, and
/// characters that change the direction of writing could show a name as another one. Each is printed as \uXXXX, which
/// is seen, and which in JSON means the very same character. Line breaks and tabs stay. Any one thread.
namespace plotix {

/// UTF-8 to UTF-8; what is no UTF-8 becomes U+FFFD.
std::string harmlessText(std::string_view text);

/// Sizes of files: "812 bytes", "96.5 KB", "1.3 GB".
std::string sizeText(long long bytes);

/// "1 record", "2 records".
std::string countText(std::size_t count, const char* one, const char* several);

/// Passes on what is written to it, made harmless. *Borrows* the stream it writes to; flushing flushes that too.
class HarmlessStream : private std::streambuf, public std::ostream {
public:
    explicit HarmlessStream(std::ostream& to) : std::ostream(this), m_to(to) {}
    ~HarmlessStream() override { sync(); }

private:
    int overflow(int byte) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;
    void passOn(bool all);

    std::ostream& m_to;
    std::string m_held;  ///< the bytes of a character that has not wholly come yet
};

}  // namespace plotix
