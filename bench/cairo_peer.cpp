#include "bench/cairo_peer.h"

#ifdef KVO_WITH_CAIRO
#include <cairo-pdf.h>
#endif

namespace kvo::bench {

#ifdef KVO_WITH_CAIRO
namespace {

constexpr double a4Short = 595;
constexpr double a4Long = 842;

// A document on which pages are painted, and its end.
class Document {
public:
    Document(const std::string& path, double width, double height)
        : m_surface(cairo_pdf_surface_create(path.c_str(), width, height)),
          m_cairo(cairo_create(m_surface)) {}
    ~Document() {
        cairo_destroy(m_cairo);
        cairo_surface_finish(m_surface);
        cairo_surface_destroy(m_surface);
    }
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    cairo_t* cairo() const { return m_cairo; }

private:
    cairo_surface_t* m_surface;
    cairo_t* m_cairo;
};

} // namespace

bool cairoTable(const std::string& path, const std::vector<PageOfCells>& pages) {
    const Document document(path, a4Short, a4Long);
    cairo_t* cairo = document.cairo();
    for (const PageOfCells& page : pages) {
        cairo_select_font_face(
            cairo, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(cairo, 8);
        for (const PageCell& cell : page) {
            cairo_move_to(cairo, cell.x, cell.y);
            cairo_show_text(cairo, cell.text.c_str());
        }
        cairo_show_page(cairo);
    }
    return true;
}

bool cairoCurves(const std::string& path, const std::vector<PageCurve>& curves) {
    const Document document(path, a4Long, a4Short);
    cairo_t* cairo = document.cairo();
    cairo_set_line_width(cairo, 0.5);
    for (const PageCurve& curve : curves) {
        cairo_set_source_rgb(cairo, curve.red, curve.green, curve.blue);
        for (const auto& [x, y] : curve.points) cairo_line_to(cairo, x, y);
        cairo_stroke(cairo);
    }
    cairo_show_page(cairo);
    return true;
}
#else
bool cairoTable(const std::string&, const std::vector<PageOfCells>&) {
    return false;
}

bool cairoCurves(const std::string&, const std::vector<PageCurve>&) {
    return false;
}
#endif

} // namespace kvo::bench
