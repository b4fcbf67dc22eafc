#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

#include "VCamForms.h"

namespace {

vcam::ConvertFunction& KernelOf(const std::string& form, int bits) {
    for (const VCamForm& candidate : VCamFormsOfProcessor()) {
        if (candidate.name == form) {
            return *candidate.ConvertOf(bits / 8);
        }
    }
    throw std::invalid_argument("This processor has no form " + form + ".");
}

}  // namespace

/// The only function whose instructions are counted.
[[gnu::noinline]] void DrawCountedFrame(ViewJob& job, vcam::ConvertFunction& convert) {
    DrawView(job, job.move.viewOfFrame(17), convert);
}

/// Draws one frame of a virtual camera in one form of the kernel, for a tool that counts what is
/// done in `DrawCountedFrame`.
int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "--forms") {
        for (const VCamForm& form : VCamFormsOfProcessor()) {
            std::cout << form.name << '\n';
        }
        return 0;
    }
    if (argc != 6) {
        std::cerr << "Usage: " << argv[0] << " --forms | FORM SOURCE_SIDE WIDTH HEIGHT BITS\n";
        return 2;
    }
    try {
        const int bits = std::atoi(argv[5]);
        vcam::ConvertFunction& convert = KernelOf(argv[1], bits);
        ViewJob job(kTurn, std::atoi(argv[2]), std::atoi(argv[3]), std::atoi(argv[4]), bits);
        DrawCountedFrame(job, convert);
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
        return 1;
    }
    return 0;
}
