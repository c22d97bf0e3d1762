#pragma once
// Paper: what the forms print of themselves.
#include <cstdint>
#include <string>
#include <vector>

namespace kvo::platform {

// A picture in memory, rows from the top, 0xAARRGGBB a pixel.
struct PixelImage {
    int widthPx = 0;
    int heightPx = 0;
    std::vector<std::uint32_t> pixels;
};

enum class Printed { done, cancelled, failed };

class Printer {
public:
    virtual ~Printer() = default;
    // One page with the picture as large as fits, under the name of the document. Without a printer
    // it asks for a PDF file. `failed` leaves no half document behind.
    [[nodiscard]] virtual Printed printPicture(
        const PixelImage& picture, const std::string& documentName) = 0;
};

} // namespace kvo::platform
