// Text into pages, and pages into a program file.
#include "compare.h"

#include "program/PicturesArea_g6.h"
#include "program/ProgramObj_g6.h"

#include <pango/pangocairo.h>

#include <memory>

namespace qm::bench {
namespace {

constexpr int kWidth = 128, kHeight = 32;
constexpr Ouint16 kPoints = 9;
constexpr double kPixels = 12;
constexpr std::size_t kCharacters = 10000;

std::string repeated(const std::string& words, std::size_t charactersInWords) {
    std::string text;
    for (std::size_t n = 0; n < kCharacters; n += charactersInWords) text += words;
    return text;
}

qm_G5_G6_fontData font_data() {
    qm_G5_G6_fontData data;
    data.arrMode = MULTILINE;
    data.fontSize = kPoints;
    data.color = eRed;
    return data;
}

std::unique_ptr<PicturesArea_g6> area_of(const std::string& text, const char* font) {
    auto area = std::make_unique<PicturesArea_g6>();
    area->setGeometry({ePicturesArea, 0, 0, kWidth, kHeight});
    area->AreaAddTxt(text.c_str(), font, font_data(), qm_G6_page_header{});
    return area;
}

// What cairo takes for the same characters: as many to a line, lines to a page and pages as the library made,
// on one surface, cleared for each page.
class CairoAlone {
  public:
    CairoAlone(const std::string& text, std::size_t lines, const char* font) : m_canvas(kWidth, kHeight) {
        cairo_t* c = m_canvas.context();
        cairo_select_font_face(c, font, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(c, kPixels);
        cairo_set_source_rgb(c, 1, 0, 0);
        const std::size_t perLine = text.size() / lines + 1;
        for (std::size_t begin = 0; begin < text.size();) {
            std::size_t end = std::min(text.size(), begin + perLine);
            while (end < text.size() && (text[end] & 0xC0) == 0x80) ++end; // whole characters
            add_line(text.substr(begin, end - begin));
            begin = end;
        }
    }
    void draw_text() {
        for (std::size_t i = 0; i < m_lines.size(); ++i) {
            if (i % 2 == 0) m_canvas.clear();
            cairo_move_to(m_canvas.context(), 0, baseline(i));
            cairo_show_text(m_canvas.context(), m_lines[i].c_str());
        }
        cairo_surface_flush(m_canvas.surface());
    }
    // A page in one call, and no characters to look up.
    void draw_glyphs() {
        for (std::size_t i = 0; i < m_pages.size(); ++i) {
            m_canvas.clear();
            cairo_show_glyphs(m_canvas.context(), m_pages[i].data(), static_cast<int>(m_pages[i].size()));
        }
        cairo_surface_flush(m_canvas.surface());
    }

  private:
    static double baseline(std::size_t line) { return line % 2 == 0 ? 12 : 28; }

    void add_line(const std::string& line) {
        cairo_glyph_t* glyphs = nullptr;
        int count = 0;
        const auto status = cairo_scaled_font_text_to_glyphs(
            cairo_get_scaled_font(m_canvas.context()), 0, baseline(m_lines.size()), line.data(),
            static_cast<int>(line.size()), &glyphs, &count, nullptr, nullptr, nullptr);
        require(status == CAIRO_STATUS_SUCCESS, "cairo alone: no glyphs");
        if (m_lines.size() % 2 == 0) m_pages.emplace_back();
        m_pages.back().insert(m_pages.back().end(), glyphs, glyphs + count);
        cairo_glyph_free(glyphs);
        m_lines.push_back(line);
    }

    Canvas32 m_canvas;
    std::vector<std::string> m_lines;
    std::vector<std::vector<cairo_glyph_t>> m_pages;
};

// What Pango takes to lay the same text out in the same font and width, and to draw its lines.
class PangoAlone {
  public:
    PangoAlone(std::string text, const char* font)
        : m_text(std::move(text)), m_lineHeight(font_for({font, "", kPixels, false, false})->line_height()),
          m_canvas(kWidth, kHeight), m_font(pango_font_description_from_string(font)) {
        pango_font_description_set_absolute_size(m_font.get(), kPixels * PANGO_SCALE);
        cairo_set_source_rgb(m_canvas.context(), 1, 0, 0); // and no antialiasing, as in every canvas
    }
    // So many lines go on a page.
    void set_lines_per_page(std::size_t count) { m_perPage = count; }
    // Gives the number of lines.
    std::size_t draw() {
        cairo_t* c = m_canvas.context();
        const std::unique_ptr<PangoLayout, CairoDeleter<g_object_unref>> layout(pango_cairo_create_layout(c));
        pango_layout_set_font_description(layout.get(), m_font.get());
        pango_layout_set_width(layout.get(), kWidth * PANGO_SCALE);
        pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
        pango_layout_set_text(layout.get(), m_text.data(), static_cast<int>(m_text.size()));
        std::size_t number = 0;
        for (GSList* line = pango_layout_get_lines_readonly(layout.get()); line;
             line = line->next, ++number) {
            if (number % m_perPage == 0) m_canvas.clear();
            cairo_move_to(c, 0, 12 + m_lineHeight * static_cast<int>(number % m_perPage));
            pango_cairo_show_layout_line(c, static_cast<PangoLayoutLine*>(line->data));
        }
        cairo_surface_flush(m_canvas.surface());
        return number;
    }

  private:
    std::string m_text;
    int m_lineHeight;
    std::size_t m_perPage = 1;
    Canvas32 m_canvas;
    std::unique_ptr<PangoFontDescription, CairoDeleter<pango_font_description_free>> m_font;
};

std::function<std::size_t()> pages_of(const std::string& text, const char* font) {
    screen_settings().set(SCREEN_COLOR_DOUBLE, 0x0262, DOUBLE_COLOR_PIXTYPE_1);
    return [=] {
        const auto area = area_of(text, font);
        area->PreparePageData();
        return area->pages.size();
    };
}

void compare_shaping(const std::string& name, const std::string& text, const char* font) {
    const auto pages = pages_of(text, font);
    const auto pango = std::make_shared<PangoAlone>(text, font);
    const std::size_t count = pages(), lines = pango->draw();
    const std::size_t perPage = (lines + count / 2) / count;
    const auto same = static_cast<double>(perPage * count), all = static_cast<double>(lines);
    require(count > 100 && same < 1.2 * all && all < 1.2 * same, name + ": not the lines that Pango makes");
    pango->set_lines_per_page(perPage);
    compare_speed(name, text.size(), [=] { pages(); }, {{"Pango and cairo", [=] { pango->draw(); }, 1}});
}

void compare_text(const std::string& name, const std::string& text, const char* font) {
    const auto pages = pages_of(text, font);
    const std::size_t count = pages();
    require(count > 100, name + ": pages are missing");
    const auto cairo = std::make_shared<CairoAlone>(text, 2 * count, font);
    compare_speed(name, text.size(), [=] { pages(); },
                  {{"cairo alone, from text", [=] { cairo->draw_text(); }, 1 / 1.3},
                   {"cairo alone, from glyphs", [=] { cairo->draw_glyphs(); }, 1 / 1.3}});
}

// A program of so many picture-sized pages, assembled again and again.
void compare_assembly() {
    const auto assemble = [](std::size_t pages) {
        const auto program = std::make_shared<ProgramObj_g6>();
        program->ProgramAddArea_g6(0, {ePicturesArea, 0, 0, kWidth, kHeight}, {});
        std::string lines;
        for (std::size_t i = 0; i < 2 * pages; ++i) lines += "line\n";
        static_cast<PicturesArea_g6*>(program->getArea(0))
            ->AreaAddTxt(lines.c_str(), "DejaVu Sans", font_data(), qm_G6_page_header{});
        return [program] { program->SendProgram(); };
    };
    const std::size_t page = pixel_data_size(0, kWidth, kHeight, screen_settings().layout());
    const auto many = [&assemble](std::size_t programs, std::size_t pages) {
        return [program = assemble(pages), programs] {
            for (std::size_t i = 0; i < programs; ++i) program();
        };
    };
    compare_speed("assemble a program of 1,000 pages", 1000 * page, assemble(1000),
                  {{"100 programs of 10 pages", many(100, 10)}, {"1,000 programs of 1 page", many(1000, 1)}});
    for (const auto& [pages, name] :
         {std::pair{1UL, "1 page"}, {10UL, "10 pages"}, {100UL, "100 pages"}, {1000UL, "1,000 pages"}})
        compare_memory(
            std::string("memory to assemble ").append(name), [assemble, pages = pages] { assemble(pages)(); },
            "their pixels", pages * page);
}

} // namespace

void programs() {
    compare_text("10,000 Latin characters into pages", repeated("signs that say what they mean ", 30),
                 "DejaVu Sans");
    compare_text("10,000 Chinese characters into pages", repeated("欢迎光临今日特价新鲜水果", 12),
                 "WenQuanYi Micro Hei");
    compare_shaping("10,000 Arabic characters into pages",
                    repeated("مرحبا بكم في معرض المنتجات الجديدة ", 35), "DejaVu Sans");
    compare_shaping("10,000 Thai characters into pages", repeated("ยินดีต้อนรับสู่ร้านของเรา วันนี้ลดราคาผลไม้ ", 44),
                    "Loma");
    compare_assembly();
}

} // namespace qm::bench
