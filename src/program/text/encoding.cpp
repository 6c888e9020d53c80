#include "program/text/encoding.h"

#include <iconv.h>

namespace qm {
namespace {

class Converter {
  public:
    Converter(const char* from, const char* to) : m_descriptor(iconv_open(to, from)) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (*this) iconv_close(m_descriptor);
    }
    explicit operator bool() const {
        return m_descriptor != reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)
    }
    [[nodiscard]] iconv_t get() const { return m_descriptor; }

  private:
    iconv_t m_descriptor;
};

long convert(const char* from, const char* to, std::string& str) {
    std::string converted(3 * str.size(), '\0');
    std::size_t inLeft = str.size(), outLeft = converted.size();
    const long result = ChangeCode(from, to, str.data(), inLeft, converted.data(), outLeft);
    converted.resize(converted.size() - outLeft);
    str = std::move(converted);
    return result;
}

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr char32_t kReplacementCharacter = 0xFFFD;

// A first byte, how long its sequence is, and the range of its second byte, which is what keeps overlong
// forms, surrogates and values past U+10FFFF out.
struct Lead {
    unsigned char from, to, length, secondFrom, secondTo;
};
constexpr Lead kLeads[] = {
    {0x00, 0x7F, 1, 0, 0},       {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

unsigned char byte_at(std::string_view text, std::size_t i) { return static_cast<unsigned char>(text[i]); }

struct Sequence {
    std::size_t length; // bytes that belong together
    bool valid;
};

Sequence sequence_at(std::string_view text) {
    const unsigned char first = byte_at(text, 0);
    for (const Lead& lead : kLeads) {
        if (first < lead.from || first > lead.to) continue;
        for (std::size_t i = 1; i < lead.length; ++i) {
            const unsigned char low = i == 1 ? lead.secondFrom : 0x80, high = i == 1 ? lead.secondTo : 0xBF;
            if (i >= text.size() || byte_at(text, i) < low || byte_at(text, i) > high) return {i, false};
        }
        return {lead.length, true};
    }
    return {1, false};
}

} // namespace

long ChangeCode(const char* pFromCode, const char* pToCode, const char* pInBuf, std::size_t& iInLen,
                char* pOutBuf, std::size_t& iOutLen) {
    const Converter converter(pFromCode, pToCode);
    if (!converter) return -1;
    char* in = const_cast<char*>(pInBuf); // iconv's signature; it does not write there
    return static_cast<long>(iconv(converter.get(), &in, &iInLen, &pOutBuf, &iOutLen));
}

long GB2312ToUTF8(std::string& str) { return convert("gb2312", "UTF-8", str); }
long GB2312ToUnicode(std::string& str) { return convert("gb2312", "UCS-2LE", str); }
long UTF8ToUnicode(std::string& str) { return convert("UTF-8", "UCS-2LE", str); }
long UnicodeToUTF8(std::string& str) { return convert("UCS-2LE", "UTF-8", str); }
long UTF8ToGB2312(std::string& str) { return convert("UTF-8", "GB2312", str); }
long UnicodeToGB2312(std::string& str) { return convert("UCS-2LE", "GB2312", str); }

std::string repair_utf8(std::string_view text) {
    std::string repaired;
    repaired.reserve(text.size());
    while (!text.empty()) {
        const Sequence sequence = sequence_at(text);
        repaired += sequence.valid ? text.substr(0, sequence.length) : kReplacement;
        text.remove_prefix(sequence.length);
    }
    return repaired;
}

std::u32string utf32_of(std::string_view utf8) {
    constexpr unsigned char kFirstBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07}; // by the length of the sequence
    std::u32string characters;
    characters.reserve(utf8.size());
    while (!utf8.empty()) {
        const Sequence sequence = sequence_at(utf8);
        char32_t character = byte_at(utf8, 0) & kFirstBits[sequence.length];
        for (std::size_t i = 1; i < sequence.length; ++i)
            character = character << 6U | (byte_at(utf8, i) & 0x3FU);
        characters += sequence.valid ? character : kReplacementCharacter;
        utf8.remove_prefix(sequence.length);
    }
    return characters;
}

} // namespace qm
