#include "program/text/encoding.h"

#include "program/text/text_repair.h"

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

std::u16string ucs2_of(std::string_view utf8) {
    std::string text = repair_utf8(utf8);
    UTF8ToUnicode(text);
    std::u16string units(text.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<char16_t>(static_cast<unsigned char>(text[2 * i]) |
                                         static_cast<unsigned char>(text[2 * i + 1]) << 8U);
    return units;
}

} // namespace qm
