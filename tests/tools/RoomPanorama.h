#ifndef KIVFISHEYE_TESTS_ROOM_PANORAMA_H
#define KIVFISHEYE_TESTS_ROOM_PANORAMA_H

#include <functional>
#include <string>
#include <vector>

#include "RoomTruth.h"
#include "ToolRun.h"

/// A folder with a picture of the room, of which the tool makes panoramas.
class RoomPanoramas {
public:
    RoomPanoramas(KivFisheyeLib::MountType mount, const char* view,
                  const RoomTruth::LensRadii& radii = {}, std::uint32_t width = 600,
                  std::uint32_t height = 600);

    ToolRun Run(const std::vector<std::string>& options) const;
    /// The picture of a run that has nothing to say.
    KivFisheyeTools::Picture Made(const std::vector<std::string>& options) const;
    /// The picture of the last run.
    KivFisheyeTools::Picture Last() const;

private:
    TemporaryFolder m_folder;
    KivFisheyeLib::MountType m_mount;
    const char* m_view;
};

/// Expects the panoramas of 24 and of 32 bits to show the same.
void ExpectSameInBothPixelFormats(const RoomPanoramas& room);

/// A panorama of the room, and where it must show each direction.
struct PlacedPanorama {
    KivFisheyeTools::Picture picture;
    std::function<RoomTruth::Place(const RoomTruth::Sphere&)> placeOf;
};

/// Directions in which lines are looked for, on the meridians of the first and on the latitudes of
/// the second numbers.
struct LinesOfRoom {
    std::vector<double> bearings;
    std::vector<double> elevations;
};

/// Expects the meridians of `bearings` at their columns, at every one of `elevations` and within
/// this many pixels, but for those too near to the picture's sides. Gives how many places were
/// looked at.
int CheckMeridians(const PlacedPanorama& panorama, const LinesOfRoom& lines, double tolerance);

/// Expects the latitudes of `elevations` at their rows, at every one of `bearings`, in the same
/// way.
int CheckLatitudes(const PlacedPanorama& panorama, const LinesOfRoom& lines, double tolerance);

/// Expects the four walls around a ceiling or table camera in their order, and none of it mirrored.
void ExpectWallsAreInOrder(const PlacedPanorama& panorama, KivFisheyeLib::MountType mount);

/// The lines that a ceiling or table camera sees beside all fixtures, letters and labels. Meridians
/// with labels near the horizon are looked for beyond them.
void ExpectLinesOfTurningPanorama(const PlacedPanorama& panorama, KivFisheyeLib::MountType mount);
void ExpectLatitudesOfTurningPanorama(const PlacedPanorama& panorama,
                                      KivFisheyeLib::MountType mount);

#endif
