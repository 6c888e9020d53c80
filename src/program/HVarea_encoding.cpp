// Text encodings of the area base.
#include "program/HVarea.h"

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
    const long result = HVarea::ChangeCode(from, to, str.data(), inLeft, converted.data(), outLeft);
    converted.resize(converted.size() - outLeft);
    str = std::move(converted);
    return result;
}

} // namespace

long HVarea::ChangeCode(const char* pFromCode, const char* pToCode, const char* pInBuf, std::size_t& iInLen,
                        char* pOutBuf, std::size_t& iOutLen) {
    const Converter converter(pFromCode, pToCode);
    if (!converter) return -1;
    char* in = const_cast<char*>(pInBuf); // iconv's signature; it does not write there
    return static_cast<long>(iconv(converter.get(), &in, &iInLen, &pOutBuf, &iOutLen));
}

long HVarea::GB2312ToUTF8(std::string& str) { return convert("gb2312", "UTF-8", str); }
long HVarea::GB2312ToUnicode(std::string& str) { return convert("gb2312", "UCS-2LE", str); }
long HVarea::UTF8ToUnicode(std::string& str) { return convert("UTF-8", "UCS-2LE", str); }
long HVarea::UnicodeToUTF8(std::string& str) { return convert("UCS-2LE", "UTF-8", str); }
long HVarea::UTF8ToGB2312(std::string& str) { return convert("UTF-8", "GB2312", str); }
long HVarea::UnicodeToGB2312(std::string& str) { return convert("UCS-2LE", "GB2312", str); }

} // namespace qm
