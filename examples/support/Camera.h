#ifndef EXAMPLES_CAMERA_H
#define EXAMPLES_CAMERA_H

#include <KivFisheyeLib.h>

#include <memory>

#include "Picture.h"

/// A camera context that is deleted when this goes. Its interfaces go with it.
using Context = std::unique_ptr<void, void (*)(void*)>;

inline Context MakeContext() {
    return {CreateKivFisheyeCameraContext(), DeleteKivFisheyeCameraContext};
}

/// Throws `std::runtime_error` unless the library has done what `call` asked for.
void Require(ResultCode result, const char* call);

/// The record that tells the library of a picture. The library asks for the bytes of a row rounded
/// up to a multiple of 4; pixels of 4 bytes need no rounding. The picture must stay where it is as
/// long as a context has its record.
KivFisheyeLib::VideoFrameInfo FrameOf(Picture& picture);

/// A round lens in the middle of a picture, as large as its shorter side, with the reach that wall
/// panoramas and the inner circle that the other ones shall have.
KivFisheyeLib::DewarpParams RoundLens(const Picture& picture);

/// Says how the camera hangs and what shall be seen, and hands over its picture. Mount, view and
/// lens come first: with a frame there, each of them would make tables anew.
void SetUp(IKivFisheyeCamera& camera, KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view,
           Picture& input);

/// A picture of the size that the library recommends. The height of a dual panorama must be even.
Picture RecommendedPicture(IKivFisheyeCamera& camera);

#endif
