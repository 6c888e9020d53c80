// Conversions between text encodings. "Unicode" is UCS-2 little-endian.
#pragma once

#include <string>
#include <string_view>

namespace qm {

// One iconv conversion; iInLen and iOutLen are the bytes left in each buffer. -1 for an unknown encoding or
// invalid input, else the number of irreversible conversions.
long ChangeCode(const char* pFromCode, const char* pToCode, const char* pInBuf, std::size_t& iInLen,
                char* pOutBuf, std::size_t& iOutLen);
// Convert in place; on an error what was converted up to there remains, and -1 is returned.
long GB2312ToUTF8(std::string& str);
long GB2312ToUnicode(std::string& str);
long UTF8ToUnicode(std::string& str);
long UnicodeToUTF8(std::string& str);
long UTF8ToGB2312(std::string& str);
long UnicodeToGB2312(std::string& str);

// The text with U+FFFD for every invalid sequence, so that one bad byte never swallows the rest.
[[nodiscard]] std::string repair_utf8(std::string_view text);

// The characters of a text that is repaired on the way.
[[nodiscard]] std::u32string utf32_of(std::string_view utf8);

} // namespace qm
