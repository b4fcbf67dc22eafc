#ifndef KIVFISHEYE_LIB_H
#define KIVFISHEYE_LIB_H

/// The surface of libKivFisheye: the three interfaces of a camera context, and the six functions
/// that make and reach one.
///
/// A client makes a context, tells it the mount and the view, hands over an input and an output
/// frame, and calls `IKivFisheyeCamera::Process` for every picture. Here a panorama:
///
///     void* context = CreateKivFisheyeCameraContext();
///     IKivFisheyeCamera* camera = GetCameraAPI(context);
///     camera->SetMountAndViewType(MountTypeCeiling, ViewTypeFullPanorama);
///     camera->SetInputVideoParams(input, PixelFormatRGB32);
///     camera->GetRecommendOutputVideoSize(&output.width, &output.height);
///     // ... allocate the output frame ...
///     camera->SetOutputVideoParams(output);
///     camera->Process(0);
///     DeleteKivFisheyeCameraContext(context);
///
/// With `ViewTypeVCam` the output may have any size whose width 8 divides, and a click on the
/// fisheye picture steers it:
///
///     camera->CvtXYToVCamPanTiltZoom(x, y, fieldOfView, pan, tilt, zoom);
///     camera->SetAbsolutePTZ(pan, tilt, zoom);
///     camera->Process(0);
///
/// `KivFisheyeTypes.h` has the values that go in and come out. Both headers need C++11 and the
/// standard library alone.

#include "KivFisheyeExport.h"
#include "KivFisheyeTypes.h"

/// One camera: frames, mount, view, angles, lens, and the conversion itself. What converts for one
/// mount and one view is its scene, which the setters make.
///
/// All operations may be called from any thread. One lock per context puts them in order, so a
/// setter waits for a running `Process`; the operations that say "no lock" do not wait and may see
/// values from before and after a setter that runs at the same time.
///
/// Setters of frames, mount, view and lens may allocate tables. When memory runs out, and when a
/// panorama's frames are beyond what 32-bit offsets reach, they throw `std::bad_alloc` with the new
/// values stored and the context usable. A panorama's `Process` then writes nothing, or answers
/// `kResultNotReady` where a scene could not be made, until another of these setters succeeds. For
/// that one it does not matter whether it changes anything.
class IKivFisheyeCamera {
public:
    virtual ~IKivFisheyeCamera() = default;

    /// Gives `kResultOk` for the two formats whose rows run from the top, `kResultNoChange` for any
    /// other number. No lock.
    virtual ResultCode IsPixelFormatAccepted(KivFisheyeLib::PixelFormat format) = 0;

    /// Stores the record of the input frame and the pixel format of both frames.
    ///
    /// `kResultInvalidArgument`, with nothing changed: a format that is not accepted, a side of 0,
    /// a null buffer, or a stride that is not exactly the row's bytes rounded up to 4. In a
    /// panorama view every call builds the tables anew, so a client that moves its pictures about
    /// should copy them into one buffer rather than set another. After a change of format set the
    /// output again: until then `Process` writes the new pixels at the old record's stride, a
    /// useless picture that stays inside the record.
    virtual ResultCode SetInputVideoParams(const KivFisheyeLib::VideoFrameInfo& info,
                                           KivFisheyeLib::PixelFormat format) = 0;

    /// Stores the record of the output frame, in the format that `SetInputVideoParams` stored (32
    /// bits before its first call).
    ///
    /// `kResultInvalidArgument`, with nothing changed: as for the input, or a width that 8 does
    /// not divide.
    virtual ResultCode SetOutputVideoParams(const KivFisheyeLib::VideoFrameInfo& info) = 0;

    /// Changes the mount, makes the scene for it, and converts one frame at once when both frames
    /// are set. `kResultNoChange`: it is the present one. `kResultInvalidArgument`: wall with dual
    /// panorama. A number that names no mount is stored, and the context then has no scene.
    ///
    /// Pan, tilt and zoom stay as they are, also where the new mount or view would have limited
    /// them, until the next `SetAbsolutePTZ` or `SetRelativePTZ`. Set them after a change of mount.
    virtual ResultCode SetMountType(KivFisheyeLib::MountType mount) = 0;

    /// Gives the mount. `kResultInvalidArgument`: a null pointer.
    virtual ResultCode GetMountType(KivFisheyeLib::MountType* mount) = 0;

    /// Changes the view; otherwise as `SetMountType`. Views share one pan, but not its origin: see
    /// `SetAbsolutePTZ`.
    virtual ResultCode SetViewType(KivFisheyeLib::ViewType view) = 0;

    /// Gives the view. `kResultInvalidArgument`: a null pointer.
    virtual ResultCode GetViewType(KivFisheyeLib::ViewType* view) = 0;

    /// Changes both, always makes a new scene, even when neither changed, and converts one frame at
    /// once when both frames are set. `kResultInvalidArgument`: wall with dual panorama. Numbers
    /// that name no mount or view are stored, and the context then has no scene.
    virtual ResultCode SetMountAndViewType(KivFisheyeLib::MountType mount,
                                           KivFisheyeLib::ViewType view) = 0;

    /// Gives both. `kResultInvalidArgument`: either pointer is null.
    virtual ResultCode GetMountAndViewType(KivFisheyeLib::MountType* mount,
                                           KivFisheyeLib::ViewType* view) = 0;

    /// Gives the output size in pixels that suits the input, mount, view and lens. The width is a
    /// multiple of 8; a lens without extent gives sides of 0. For a panorama that no mount has it
    /// is the input's own size. A panorama's height may be odd: `Process` does not write the last
    /// row of a dual one then, so clients round it up. `kResultInvalidArgument`: a null pointer.
    /// `kResultNotReady`: no input set.
    virtual ResultCode GetRecommendOutputVideoSize(unsigned int* width, unsigned int* height) = 0;

    /// Gives width over height of that output, before its sides are rounded; 1.0 where no size is
    /// recommended and before the input is set. `kResultInvalidArgument`: a null pointer, or values
    /// that the other overload refuses. No lock.
    virtual ResultCode GetRecommendOutputVideoRatio(float* ratio) = 0;

    /// The same for any input size in pixels, mount, view and lens. `kResultInvalidArgument`: a
    /// null pointer, wall with dual panorama, or lens parameters out of range. No lock.
    virtual ResultCode GetRecommendOutputVideoRatio(unsigned int width, unsigned int height,
                                                    KivFisheyeLib::MountType mount,
                                                    KivFisheyeLib::ViewType view,
                                                    const KivFisheyeLib::DewarpParams& params,
                                                    float* ratio) = 0;

    /// Turns the view: pan and tilt in degrees, zoom as a factor from 1 to 10. A zoom below 1 keeps
    /// the present one. The next `Process` shows it; `GetPTZ` tells what was stored.
    /// `kResultNotReady`: the context has no scene.
    ///
    /// A virtual camera shows the whole lens circle at zoom 1, a view 90 degrees high at zoom 2,
    /// and 10 degrees less for each further unit of zoom. It computes every frame anew, so a turn
    /// takes no time of its own. What it cannot show is limited, where L is 90 less half the view's
    /// height, about where the middle of its edge reaches the rim; corners may show black:
    ///
    /// - wall: pan to the right and tilt upward, both -L to L.
    /// - ceiling: pan 0 to 360, clockwise on the fisheye picture from its top; tilt from 0, the
    ///   lens axis, to L.
    /// - table: pan 0 to 360, anticlockwise on the fisheye picture from its bottom; tilt from -L to
    ///   0, the lens axis.
    ///
    /// Below zoom 2 there is no tilt, and on a wall no pan: they are stored as 0. Any other
    /// NaN is stored as it is, and an infinite pan of a ceiling's or table's camera as NaN; either
    /// shows nothing.
    ///
    /// A panorama of a ceiling or table camera takes the pan alone and stores it as 0 up to 360. At
    /// 0 the right of the lens is at the picture's left edge, in a ceiling's dual panorama the left
    /// of the lens; a growing pan moves the picture to the left, by whole columns. That builds no
    /// tables anew, and a frame takes up to a quarter longer. The halves of a dual panorama are one
    /// ring: what leaves either at its left edge enters the other at its right. At exactly 180 it
    /// is not turned, as at 0. NaN and infinity are stored as NaN, and `Process` then writes
    /// nothing.
    ///
    /// A wall's panorama shows all there is before the lens and does not turn: any pan is stored as
    /// 0.
    virtual ResultCode SetAbsolutePTZ(float pan, float tilt, float zoom) = 0;

    /// The same by differences, which may also lead to a zoom below 1: that is stored as 1.
    /// `kResultNoChange`: all three are 0. `kResultNotReady`: no scene.
    ///
    /// A negative zoom difference that leads a virtual camera to a zoom from 5 to 2.1 also pulls
    /// tilt, and on a wall pan, towards 0, the more the nearer to 2.1.
    virtual ResultCode SetRelativePTZ(float pan, float tilt, float zoom) = 0;

    /// Gives the stored pan, tilt and zoom. `kResultNullPointer`: any pointer is null.
    virtual ResultCode GetPTZ(float* pan, float* tilt, float* zoom) = 0;

    /// Stores the lens parameters and, when they differ from the present ones, builds the tables
    /// anew. `kResultInvalidArgument`, with nothing changed: a value out of its range. NaN is not
    /// refused.
    virtual ResultCode SetDewarpParams(const KivFisheyeLib::DewarpParams& params) = 0;

    /// Gives the lens parameters. `kResultInvalidArgument`: a null pointer.
    virtual ResultCode GetDewarpParams(KivFisheyeLib::DewarpParams* params) = 0;

    /// Converts the picture that now lies in the input buffer into the output buffer, on this
    /// thread. `frameTag` is the client's own and is not looked at. `kResultNullPointer`: a frame
    /// is not set. `kResultNotReady`: no scene serves this mount and view. A virtual camera takes
    /// at most 12 bytes for each pixel of an output row or 4 for each input row, for the time of
    /// the call, and throws `std::bad_alloc` when they cannot be had; so do setters that convert a
    /// frame at once. Pixels that show nothing of the lens are zero bytes.
    virtual ResultCode Process(unsigned long long frameTag) = 0;

    /// Makes a still picture of the present view, in the size that `GetRecommendOutputVideoSize`
    /// gives, from the picture that now lies in the input buffer. It needs no output frame and
    /// changes nothing else; a panorama builds its tables for it. The picture is one block of
    /// memory: a `SnapshotHeader`, and after its 64 bytes the pixels, rows from the top, each at a
    /// multiple of 4 bytes. Bytes that show nothing are 0. The block lies where any object may.
    ///
    /// Whatever the result, `block` afterwards holds null or a block that the caller owns and gives
    /// to `FreeSnapshotMemory`. `kResultNullPointer`: `block` is null. `kResultNotReady`: no input
    /// set. `kResultOutOfMemory` with null: no memory for the block, or its size is beyond 32 bits;
    /// with a block that shows nothing: the lens has no extent, no scene serves this mount and
    /// view, or there is no memory for the picture. Throws `std::bad_alloc`, with null, when the
    /// scene cannot be made, or its picture not be converted, for want of memory.
    virtual ResultCode Snapshot(unsigned char** block) = 0;

    /// Releases a block from `Snapshot`, of any context. `kResultNoChange`: null. No lock.
    virtual ResultCode FreeSnapshotMemory(unsigned char* block) = 0;

    /// Gives the pan and tilt, in degrees, that aim a virtual camera of this mount and lens at a
    /// point of the input picture; use a zoom of 2 or more with them. `x` and `y` are fractions of
    /// the frame from its top left. On a ceiling and a table the view then has the point in its
    /// middle, to within a degree; on a wall both angles run evenly across the lens, which is as
    /// good along its two axes; towards its corners it is 4 degrees off halfway to the rim and 25
    /// at the rim. Points near the rim or outside the lens give angles that `SetAbsolutePTZ` will
    /// limit. NaN gives NaN, a radius of 0 NaN or infinity, a mount number without a meaning 0 and
    /// 0. Always `kResultOk`. Changes nothing. No lock.
    virtual ResultCode CvtXYToVCamPanTilt(float x, float y, float& pan, float& tilt) = 0;

    /// The same, and the zoom, 1 to 10, whose view is `fieldOfView` radians high: pi / 2 is zoom 2.
    /// Wider ones give zooms from 2 evenly down to 1 for pi and beyond; 10 degrees and less are 10.
    /// NaN and a mount number without a meaning give 1.
    virtual ResultCode CvtXYToVCamPanTiltZoom(float x, float y, float fieldOfView, float& pan,
                                              float& tilt, float& zoom) = 0;
};

/// Outlines of views on the fisheye frame, for clients that draw them there. A point is its x and
/// its y, as fractions of the frame: 0 is the middle of its first pixel, at the left or the top,
/// and 1 that of its last. An outline joins its last point to its first. The lists are the
/// caller's, lie at multiples of 16 bytes, and have two floats for each point.
///
/// All operations answer `kResultInvalidArgument`, and write nothing, for a list that is null or
/// lies elsewhere and for a count that is not a positive multiple of the one they name. Where the
/// mount's number has no meaning they answer `kResultOk` and write nothing, but for the wall's.
class IKivFisheyeROI {
public:
    virtual ~IKivFisheyeROI() = default;

    /// The outline of what a virtual camera shows with the present angles and zoom, in whatever
    /// view the context is: a quarter of the `count` points, a multiple of 16, along each edge of
    /// the view, the left one from its top, then bottom, right and top. Where the view reaches
    /// beyond the rim of the lens, the outline follows the rim. A point exactly in the lens's
    /// centre is NaN. `kResultNotReady`: no output set, whose shape is the view's.
    virtual ResultCode GetVCamROI(float* points, int count) = 0;

    /// The two halves of the ring that the upper and the lower half of a dual panorama show with
    /// the present pan: the outer arc, and as many points along the inner arc back. Each count is a
    /// multiple of 8. `kResultNotReady`: a wall. At a pan of exactly 180 the picture is not turned,
    /// and the outlines are.
    virtual ResultCode GetDualPanoramaROI(float* first, int firstCount, float* second,
                                          int secondCount) = 0;

    /// The outline of what a wall's panorama shows: a quarter of the `count` points, a multiple of
    /// 16, along each of its sides, from the left one's bottom on. `kResultNotReady`: not a wall.
    virtual ResultCode GetWallPanoramaROI(float* points, int count) = 0;

    /// The ellipses that bound the ring of a ceiling or a table, each from its right on upward.
    /// Each count is a multiple of 4. `kResultNotReady`: a wall.
    virtual ResultCode GetCeilingTablePanoramaROI(float* inner, int innerCount, float* outer,
                                                  int outerCount) = 0;
};

/// The same outlines for any lens: of `params`, which are not checked, or of the context's own lens
/// where that is null. The mount is not asked. With `params` there is no lock. Lists, counts and
/// `kResultInvalidArgument` are as `IKivFisheyeROI` has them.
class IKivFisheyeDewarpBoundary {
public:
    virtual ~IKivFisheyeDewarpBoundary() = default;

    /// As `IKivFisheyeROI::GetWallPanoramaROI`.
    virtual ResultCode CalculateWallPanoramaBoundary(const KivFisheyeLib::DewarpParams* params,
                                                     float* points, int count) = 0;

    /// As `IKivFisheyeROI::GetCeilingTablePanoramaROI`.
    virtual ResultCode CalculateCeilingTablePanoramaBoundary(
        const KivFisheyeLib::DewarpParams* params, float* inner, int innerCount, float* outer,
        int outerCount) = 0;
};

extern "C" {

/// Makes a camera context: wall mount, virtual camera, a lens that touches the frame's edges. The
/// caller owns it and gives it to `DeleteKivFisheyeCameraContext`. Throws `std::bad_alloc` when
/// memory runs out, and `std::system_error` when the system grants no lock.
KIVFISHEYE_API void* CreateKivFisheyeCameraContext(void);

/// Ends a context and all its interfaces; no call on them may be running. Null is ignored.
KIVFISHEYE_API void DeleteKivFisheyeCameraContext(void* context);

/// The interfaces of a context, valid until it is deleted; there is nothing to release. Null gives
/// null.
KIVFISHEYE_API IKivFisheyeCamera* GetCameraAPI(void* context);
KIVFISHEYE_API IKivFisheyeROI* GetROIAPI(void* context);
KIVFISHEYE_API IKivFisheyeDewarpBoundary* GetDewarpBoundaryAPI(void* context);

/// The highest instruction set that this processor and its operating system offer; kernels are
/// chosen by it. From 1 up: SSE, SSE2, SSE3, SSSE3, SSE4.1, SSE4.2, AVX, AVX2; 0 is a processor
/// that has none of them.
KIVFISHEYE_API int GetCPUInstructionSet(void);

}  // extern "C"

#endif
