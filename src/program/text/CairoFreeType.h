// Font files, opened once for the life of the process and handed to cairo.
#pragma once

#include <cairo.h>

#include <string>

namespace qm {

class CairoFreeType {
  public:
    // Initialises FreeType on first use.
    static void InitFt();
    // Closes every font file and FreeType. Nothing may be drawn with them afterwards.
    static void DestroyFt();
    // Selects the font file on the context, emboldened and slanted as asked. A file that cannot be opened
    // prints "Error %d opening font.", leaves the context's font as it was and gives false. Antialiasing
    // goes off.
    static bool SetFont(cairo_t* c, const std::string& strFont, bool bold, bool italic);
    // What an opened file says that it is; empty for one that says nothing, or is not open.
    static std::string family_of(const std::string& strFont);
};

} // namespace qm
