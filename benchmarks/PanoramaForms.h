#ifndef KIVFISHEYE_PANORAMA_FORMS_H
#define KIVFISHEYE_PANORAMA_FORMS_H

#include <string>
#include <vector>

#include "MemoryUtils.h"

/// The shape of a panorama whose lens touches the source's edges, with pixels of 32 bits.
struct PanoramaSize {
    int side;  // of the source
    int width;
    int height;
};

/// The kernels of one view and form.
struct PanoramaForm {
    std::string view;
    std::string name;
    void (*build)(const PanoramaSize& size, CAlignedBufferT<int, 32>& table);
    void (*convert)(const PanoramaSize& size, const unsigned char* src,
                    unsigned char* dst);  // null where the form has none
};

/// Of the full and the dual panorama of a table camera and the panorama of a wall camera, those
/// that run on this processor.
std::vector<PanoramaForm> PanoramaFormsOfProcessor();

#endif
