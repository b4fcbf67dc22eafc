#include "OutlineFiles.h"

#include <cmath>

#include "JsonText.h"
#include "OutlineDrawing.h"

namespace KivFisheyeTools {

namespace {

/// A colour such as #ff8000.
std::string WebColor(const Color& color) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text = "#";
    for (const double channel : {color.red, color.green, color.blue}) {
        const auto byte = static_cast<std::size_t>(std::lround(channel * 255.0));
        text += kDigits[byte / 16];
        text += kDigits[byte % 16];
    }
    return text;
}

void WritePolygon(const Outline& outline, const Size& size, TextFile* file) {
    // Whole numbers are the corners of pixels here.
    constexpr double kPixelCenter = 0.5;
    *file << "<polygon id=\"" << outline.name << "\" points=\"";
    const char* separator = "";
    for (const Point& point : outline.points) {
        const PixelPlace place = PlaceOf(point, size.width, size.height);
        *file << separator << static_cast<float>(place.column + kPixelCenter) << ","
              << static_cast<float>(place.row + kPixelCenter);
        separator = " ";
    }
    *file << "\"/>\n";
}

void WriteStroke(const Outline& outline, const Color& color, double width, TextFile* file) {
    *file << "<use xlink:href=\"#" << outline.name << "\" stroke=\"" << WebColor(color)
          << "\" stroke-width=\"" << static_cast<float>(width) << "\"/>\n";
}

/// Writes the angles that the view can be turned by.
void WriteAngles(const ViewArguments& view, const Angles& angles, TextFile* file) {
    if (IsVirtualCamera(view) || !IsWall(view)) {
        *file << "  \"pan\": " << angles.pan << ",\n";
    }
    if (IsVirtualCamera(view)) {
        *file << "  \"tilt\": " << angles.tilt << ",\n  \"zoom\": " << angles.zoom << ",\n";
    }
}

}  // namespace

void WriteOutlineSvg(const std::string& path, const std::vector<Outline>& outlines,
                     const Size& size) {
    TextFile file(path);
    file << "<svg xmlns=\"http://www.w3.org/2000/svg\" "
            "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\""
         << size.width << "\" height=\"" << size.height << "\" viewBox=\"0 0 " << size.width << " "
         << size.height << "\">\n<defs>\n";
    for (const Outline& outline : outlines) {
        WritePolygon(outline, size, &file);
    }
    file << "</defs>\n<g fill=\"none\" stroke-linejoin=\"round\">\n";
    for (const Outline& outline : outlines) {
        const OutlineStyle style = StyleOf(outline.role, size.width, size.height);
        WriteStroke(outline, style.edge, style.fullWidth, &file);
    }
    for (const Outline& outline : outlines) {
        const OutlineStyle style = StyleOf(outline.role, size.width, size.height);
        WriteStroke(outline, style.line, style.lineWidth, &file);
    }
    file << "</g>\n</svg>\n";
    file.Finish();
}

void WriteOutlineJson(const std::string& path, const ViewArguments& view, const OutlinedView& shown,
                      const Size& input) {
    TextFile file(path);
    file << "{\n";
    WriteView(view, &file);
    WriteAngles(view, shown.angles, &file);
    WriteSize("input", input, &file);
    if (shown.output) {
        WriteSize("output", *shown.output, &file);
    }
    file << "  \"coordinates\": \"fractions of the frame's width and height, from its top left: 0 "
            "is the middle of the first pixel and 1 that of the last\",\n  \"outlines\": [";
    const char* separator = "\n";
    for (const Outline& outline : shown.outlines) {
        file << separator << R"(    {"name": ")" << outline.name << R"(", "points": )";
        WritePoints(outline.points, &file);
        file << "}";
        separator = ",\n";
    }
    file << "\n  ]\n}\n";
    file.Finish();
}

}  // namespace KivFisheyeTools
