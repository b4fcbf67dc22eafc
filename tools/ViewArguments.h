#ifndef KIVFISHEYE_TOOLS_VIEW_ARGUMENTS_H
#define KIVFISHEYE_TOOLS_VIEW_ARGUMENTS_H

#include <KivFisheyeTypes.h>

#include <cstdint>
#include <string>

#include "Numbers.h"

namespace KivFisheyeTools {

/// A lens that touches the frame's edges.
constexpr KivFisheyeLib::DewarpParams kUsualLens{0.5F, 0.5F, 45.0F, 0.0F};

/// The options of commands that flatten pictures: what is shown, through which lens, how large.
struct ViewArguments {
    std::string mount;
    std::string view;
    std::string size;
    std::string format = "rgb32";
    KivFisheyeLib::DewarpParams lens = kUsualLens;
    /// Whether these parts of `lens` were given.
    bool hasWallViewAngle = false;
    bool hasInnerRadius = false;
    bool hasRadii = false;
};

/// The bytes of a pixel inside the library.
std::uint32_t BytesPerPixelOf(const ViewArguments& arguments);

/// Whether the lens image is more than a line; otherwise no output size suits it.
bool HasExtent(const KivFisheyeLib::DewarpParams& lens);

/// Words such as "A round lens as high as this picture needs --radius-x 0.375", or nothing when the
/// usual radii make the lens round.
std::string WordsForRoundLens(const Size& picture);

/// Words such as "full panorama".
std::string WordsFor(KivFisheyeLib::ViewType view);

bool IsVirtualCamera(const ViewArguments& arguments);
bool IsDualPanorama(const ViewArguments& arguments);
bool IsWall(const ViewArguments& arguments);

/// Whether the view is another with another value of this part of the lens.
bool DependsOnWallViewAngle(const ViewArguments& arguments);
bool DependsOnInnerRadius(const ViewArguments& arguments);

/// What is made of the flattened pictures. The pixels of a video ask for an even height.
enum class OutputKind { Picture, Video };

/// Throws `UsageError` when the options do not go together.
void CheckView(const ViewArguments& arguments, OutputKind output);

}  // namespace KivFisheyeTools

#endif
