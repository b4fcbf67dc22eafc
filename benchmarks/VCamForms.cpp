#include "VCamForms.h"

#include "FisheyeVCamAlgo.h"
#include "FisheyeVCamAlgo_C.h"
#include "KernelPointer.h"
#include "vcam/VCamMounts.h"
#if defined(__x86_64__)
#include "FisheyeVCamAlgo_AVX.h"
#include "FisheyeVCamAlgo_SSE41.h"
#endif

using namespace FisheyeVCamAlgoNS;

std::vector<VCamForm> VCamFormsOfProcessor() {
    std::vector<VCamForm> forms{{"C", C::CvtVCamRGB<24>, C::CvtVCamRGB<32>, false}};
#if defined(__x86_64__)
    const Form best = AvxSse41OrC(GetCpuInstructionSet());
    if (best >= Form::SSE41) {
        forms.push_back({"SSE41", SSE41::CvtVCamRGB<24>, SSE41::CvtVCamRGB<32>, true});
    }
    if (best >= Form::AVX) {
        forms.push_back({"AVX", AVX::CvtVCamRGB<24>, AVX::CvtVCamRGB<32>, true});
    }
#endif
    return forms;
}

VCamForm BestVCamForm() {
    return {"best", CvtVCamRGB24, CvtVCamRGB32, true};
}

void DrawView(ViewJob& job, const View& view, vcam::ConvertFunction& convert) {
    float matrix[16];
    DownwardFisheyeAlgoNS::GetModelViewMatrix(view.pan, view.tilt, matrix);
    convert(job.side, job.side, job.srcStride, job.src.data(), ViewJob::kRadius, ViewJob::kRadius,
            job.move.eyeZ, ViewJob::kFieldOfView, job.Aspect(), job.move.eyeZ, matrix, job.dstWidth,
            job.dstHeight, job.dstStride, job.dst.data());
}
