#pragma once
// File, Export of the graph window: the run as a table, and what the window shows as a picture.
#include "graph/course.h"
#include "graph/export_csv.h"
#include "graph/export_file.h"
#include "graph/forms/export_picture.h"
#include "platform/bytes.h"

#include <QImage>

#include <string>

class QWidget;

namespace kvo::forms {

class GraphPrinting;
class GraphSurface;

class GraphExport {
public:
    // The items of Mnu_Export.
    enum Item { wholeRun, stretchInView, pngPicture, svgPicture, pdfPicture, toClipboard };

    // What outlives the window while the program runs.
    struct Kept {
        std::string folder; // of the last export
        QSize sizePx;       // of the last PNG; none yet: that of the window
        bool whitePaper = false;
    };

    // What is handed in must outlive it.
    GraphExport(const graph::Course& course, const GraphPrinting& printing, GraphSurface& surface)
        : m_course(course), m_printing(printing), m_surface(surface) {}

    // An item of Mnu_Export; nothing without a run.
    void Mnu_Export(int item);

    // The bytes of a picture file; `item` is one of the three kinds. The size is a PNG's.
    platform::Bytes picture(int item, const PictureLook& look) const;

private:
    void exportCsv(bool inView) const;
    void exportPicture(int item) const;
    void copyPicture() const;
    std::string askPath(const graph::ExportForm& form) const;
    QSize windowSizePx() const;

    const graph::Course& m_course;
    const GraphPrinting& m_printing;
    GraphSurface& m_surface;
};

} // namespace kvo::forms
