#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>

#include "ExampleFolder.h"
#include "LiveExample.h"
#include "TestPicture.h"

using namespace KivFisheyeLib;

namespace {

const std::string kUp = "\033[A";
const std::string kDown = "\033[B";
const std::string kRight = "\033[C";
const std::string kLeft = "\033[D";
const std::string kStart = "pan 0.0, tilt 0.0, zoom 2.0; ";

/// `live-ptz` before a picture of slopes, in a terminal of 70 by 21 cells that has begun to show
/// it.
class LivePtz : public testing::Test {
protected:
    explicit LivePtz(const std::string& mount = "wall")
        : live("live-ptz", {mount, folder.Fisheye()}, 70, 21) {
        live.ExpectRow(20, kStart);
    }

    void ExpectEndsAsItBegan() {
        EXPECT_EQ(live.Wait(), 0);
        EXPECT_EQ(live.Errors(), "");
        EXPECT_TRUE(live.HasFirstMode());
        EXPECT_TRUE(live.Shown().HasMode(25));
        EXPECT_FALSE(live.Shown().HasMode(1049));
        EXPECT_TRUE(live.Shown().Surprises().empty()) << live.Shown().Surprises().front();
    }

    const Picture fisheye = Slopes(256, 256);
    const ExampleFolder folder{fisheye};
    LiveExample live;
};

TEST_F(LivePtz, ShowsTheViewInHalfBlocks) {
    // 8 divides 64 of the 70 columns.
    live.Shown().ExpectPicture(
        FlattenedByLibrary(fisheye, SquareView(MountTypeWall, ViewTypeVCam, 0, 0, 2), 64, 40), 0);
    EXPECT_EQ(live.Shown().At(64, 0).glyph, " ");
}

TEST_F(LivePtz, TurnsByArrowsOfBothKinds) {
    live.Type(kRight + kRight + kUp);
    live.ExpectRow(20, "pan 10.0, tilt 5.0, zoom 2.0; ");
    live.Shown().ExpectPicture(
        FlattenedByLibrary(fisheye, SquareView(MountTypeWall, ViewTypeVCam, 10, 5, 2), 64, 40), 0);
    live.Type(kDown + kDown + kLeft + kLeft + kLeft);
    live.ExpectRow(20, "pan -5.0, tilt -5.0, zoom 2.0; ");
    live.Type("\033OC\033OC\033OA\033OA\033OA");
    live.ExpectRow(20, "pan 5.0, tilt 10.0, zoom 2.0; ");
}

TEST_F(LivePtz, ZoomsAndGoesBackToTheStart) {
    live.Type("+++");
    live.ExpectRow(20, "pan 0.0, tilt 0.0, zoom 3.5; ");
    live.Type("-");
    live.ExpectRow(20, "pan 0.0, tilt 0.0, zoom 3.0; ");
    live.Type(kLeft + kDown);
    live.ExpectRow(20, "pan -5.0, tilt -5.0, zoom 3.0; ");
    live.Shown().ExpectPicture(
        FlattenedByLibrary(fisheye, SquareView(MountTypeWall, ViewTypeVCam, -5, -5, 3), 64, 40), 0);
    live.Type("r");
    live.ExpectRow(20, kStart);
}

TEST_F(LivePtz, LeavesOutWhatItDoesNotKnow) {
    // Keys and reports that look like others, and a single Escape before a key.
    live.Type("x\033[1~\033[<0;5;5M\033OP\033\033\t\033" + kRight + "Q\033[Z\033[?1;2c");
    live.ExpectRow(20, "pan 5.0, tilt 0.0, zoom 2.0; ");
    live.Type("q");
    ExpectEndsAsItBegan();
    EXPECT_EQ(live.Shown().Row(20).rfind("pan 5.0, tilt 0.0, zoom 2.0; ", 0), 0U);
}

TEST_F(LivePtz, StaysWithinWhatTheLibraryShows) {
    for (int i = 0; i < 12; ++i) {
        live.Type(kRight);
    }
    // Half of a view of 90 degrees less than the rim.
    live.ExpectRow(20, "pan 45.0, tilt 0.0, zoom 2.0; ");
}

TEST_F(LivePtz, TellsTheTimeOfAFrame) {
    live.Type("q");
    ExpectEndsAsItBegan();
    double milliseconds = -1.0;
    EXPECT_EQ(std::sscanf(live.Shown().Row(20).c_str(), "pan 0.0, tilt 0.0, zoom 2.0; %lf ms",
                          &milliseconds),
              1);
    EXPECT_GE(milliseconds, 0.0);
}

TEST_F(LivePtz, FollowsTheWindow) {
    // Too narrow for the line, of which as much is shown as fits.
    live.Resize(33, 10);
    live.Type(kUp);
    live.ExpectRow(9, "pan 0.0, tilt 5.0, zoom 2.0; ");
    live.Shown().ExpectPicture(
        FlattenedByLibrary(fisheye, SquareView(MountTypeWall, ViewTypeVCam, 0, 5, 2), 32, 18), 0);
}

TEST_F(LivePtz, TakesKeysOneByOneAndUnseen) {
    const tcflag_t echoes = ICANON | ECHO | ISIG;
    EXPECT_EQ(live.Mode().c_lflag & echoes, 0U);
    EXPECT_FALSE(live.HasFirstMode());
    EXPECT_TRUE(live.Shown().HasMode(1049));
    EXPECT_FALSE(live.Shown().HasMode(25));
}

TEST_F(LivePtz, EndsByItsKey) {
    live.Type("q");
    ExpectEndsAsItBegan();
}

TEST_F(LivePtz, EndsByCtrlC) {
    live.Type("\003");
    ExpectEndsAsItBegan();
}

TEST_F(LivePtz, EndsByCtrlD) {
    live.Type("\004");
    ExpectEndsAsItBegan();
}

TEST_F(LivePtz, EndsByInterruption) {
    live.Send(SIGINT);
    ExpectEndsAsItBegan();
}

TEST_F(LivePtz, EndsByTermination) {
    live.Send(SIGTERM);
    ExpectEndsAsItBegan();
}

TEST_F(LivePtz, EndsBySeveralSignalsAtOnce) {
    // They are all there when it goes on.
    live.Send(SIGSTOP);
    live.Send(SIGHUP);
    live.Send(SIGTERM);
    live.Send(SIGINT);
    live.Send(SIGCONT);
    ExpectEndsAsItBegan();
}

TEST_F(LivePtz, EndsWhenTheTerminalGoes) {
    live.HangUp();
    EXPECT_EQ(live.Wait(), 0);
    EXPECT_EQ(live.Errors(), "");
}

class LivePtzOnCeiling : public LivePtz {
protected:
    LivePtzOnCeiling() : LivePtz("ceiling") {}
};

TEST_F(LivePtzOnCeiling, TurnsBeyondTheStart) {
    live.Type(kLeft + kUp + kUp);
    live.ExpectRow(20, "pan 355.0, tilt 10.0, zoom 2.0; ");
    live.Shown().ExpectPicture(
        FlattenedByLibrary(fisheye, SquareView(MountTypeCeiling, ViewTypeVCam, 355, 10, 2), 64, 40),
        0);
}

TEST(LivePtzWithoutAKeyboard, ShowsAllKeysOfAPipeAndEnds) {
    const Picture fisheye = Slopes(256, 256);
    const ExampleFolder folder(fisheye);
    LiveExample live({"/bin/sh", "-c", "printf '\\033[C+' | \"$0\" table \"$1\"",
                      PathOfExample("live-ptz"), folder.Fisheye()},
                     80, 24);
    EXPECT_EQ(live.Wait(), 0);
    EXPECT_EQ(live.Errors(), "");
    EXPECT_EQ(live.Shown().Row(23).rfind("pan 5.0, tilt 0.0, zoom 2.5; ", 0), 0U)
        << live.Shown().Row(23);
    live.Shown().ExpectPicture(
        FlattenedByLibrary(fisheye, SquareView(MountTypeTable, ViewTypeVCam, 5, 0, 2.5F), 80, 46),
        0);
    EXPECT_TRUE(live.Shown().Surprises().empty());
}

}  // namespace
