#include "JsonText.h"

namespace KivFisheyeTools {

void WriteView(const ViewArguments& view, TextFile* file) {
    *file << R"(  "mount": ")" << view.mount << "\",\n"
          << R"(  "view": ")" << view.view << "\",\n"
          << R"(  "lens": {"radiusX": )" << view.lens.radiusX << R"(, "radiusY": )"
          << view.lens.radiusY;
    if (DependsOnWallViewAngle(view)) {
        *file << R"(, "wallViewAngle": )" << view.lens.wallViewAngle;
    }
    if (DependsOnInnerRadius(view)) {
        *file << R"(, "innerRadiusRatio": )" << view.lens.innerRadiusRatio;
    }
    *file << "},\n";
}

void WriteSize(const std::string& name, const Size& size, TextFile* file) {
    *file << "  \"" << name << R"(": {"width": )" << size.width << R"(, "height": )" << size.height
          << "},\n";
}

void WritePoints(const std::vector<Point>& points, TextFile* file) {
    *file << "[";
    const char* separator = "";
    for (const Point& point : points) {
        *file << separator << "[" << point.x << ", " << point.y << "]";
        separator = ", ";
    }
    *file << "]";
}

}  // namespace KivFisheyeTools
