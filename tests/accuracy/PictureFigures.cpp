#include "accuracy/PictureFigures.h"

std::string NameOf(Conversion conversion) {
    const std::string names[] = {"full panorama, direct", "full panorama, table",
                                 "dual panorama, direct", "dual panorama, table",
                                 "wall panorama, direct", "wall panorama, table",
                                 "virtual camera"};
    return names[static_cast<int>(conversion)];
}

bool HasForm(Conversion conversion, KernelForm form) {
    switch (conversion) {
        case Conversion::FullDirect:
        case Conversion::DualDirect:
        case Conversion::WallDirect:
            return form != KernelForm::AVX;
        default:
            return true;
    }
}
