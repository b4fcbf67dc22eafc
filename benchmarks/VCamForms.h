#ifndef KIVFISHEYE_VCAM_FORMS_H
#define KIVFISHEYE_VCAM_FORMS_H

#include <vector>

#include "ViewJob.h"
#include "vcam/VCamJob.h"

/// The virtual camera's kernels of one form.
struct VCamForm {
    const char* name;
    vcam::ConvertFunction* convert24;
    vcam::ConvertFunction* convert32;
    bool hasFastArccosine;

    vcam::ConvertFunction* ConvertOf(int bytesPerPixel) const {
        return bytesPerPixel == 3 ? convert24 : convert32;
    }
};

/// The forms that run on this processor, the scalar one first.
std::vector<VCamForm> VCamFormsOfProcessor();

/// What the library calls itself: its best form.
VCamForm BestVCamForm();

/// Draws one frame of the job.
void DrawView(ViewJob& job, const View& view, vcam::ConvertFunction& convert);

#endif
