#include <KivFisheyeLib.h>
#include <Png.h>
#include <gtest/gtest.h>

#include <cmath>

#include "ExampleFolder.h"
#include "LiveExample.h"
#include "TestPicture.h"

using namespace KivFisheyeLib;

namespace {

constexpr int kColumns = 100;
constexpr int kRows = 31;
// The view takes half of the columns, as far as 8 divides them, and all rows but the last; so does
// the fisheye picture, whose sides are equal.
constexpr std::uint32_t kViewWidth = 48;
constexpr std::uint32_t kViewHeight = 60;
constexpr int kSide = 48;
const std::string kLine = "Click at the left";

LibraryView AimedAt(MountType mount, float x, float y) {
    LibraryView view = SquareView(mount, ViewTypeVCam);
    void* const context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera* const camera = GetCameraAPI(context);
    camera->SetMountAndViewType(mount, ViewTypeVCam);
    const float sixtyDegrees = std::acos(0.5F);
    EXPECT_EQ(camera->CvtXYToVCamPanTiltZoom(x, y, sixtyDegrees, view.pan, view.tilt, view.zoom),
              kResultOk);
    DeleteKivFisheyeCameraContext(context);
    return view;
}

std::string Click(int column, int row) {
    return "\033[<0;" + std::to_string(column + 1) + ';' + std::to_string(row + 1) + 'M';
}

class ClickToAim : public testing::Test {
protected:
    ClickToAim() : live("click-to-aim", {"ceiling", folder.Fisheye()}, kColumns, kRows) {
        live.ExpectRow(kRows - 1, kLine);
    }

    void End() {
        live.Type("q");
        EXPECT_EQ(live.Wait(), 0);
        EXPECT_EQ(live.Errors(), "");
        EXPECT_TRUE(live.Shown().Surprises().empty()) << live.Shown().Surprises().front();
    }

    /// What the click on a cell shows.
    Picture ViewOf(int column, int row) const {
        const float x = (static_cast<float>(column) + 0.5F) / kSide;
        const float y = (static_cast<float>(row) + 0.5F) / (kSide / 2);
        return FlattenedByLibrary(fisheye, AimedAt(MountTypeCeiling, x, y), kViewWidth,
                                  kViewHeight);
    }

    const Picture fisheye = Slopes(256, 256);
    const ExampleFolder folder{fisheye};
    LiveExample live;
};

TEST_F(ClickToAim, ShowsTheFisheyePictureAtTheLeft) {
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const Screen::Cell& cell = live.Shown().At(x, y / 2);
            const Color& color = y % 2 == 0 ? cell.front : cell.back;
            // The middle of the pixel, on a picture whose colours are its places.
            ASSERT_NEAR(color[0], (x + 0.5) * 256 / kSide - 0.5, 1.0);
            ASSERT_NEAR(color[1], (y + 0.5) * 256 / kSide - 0.5, 1.0);
        }
    }
    EXPECT_EQ(live.Shown().At(kSide, 0).glyph, " ");
    EXPECT_EQ(live.Shown().At(0, kSide / 2).glyph, " ");
    End();
}

TEST_F(ClickToAim, ShowsAtTheRightWhatWasClickedLast) {
    live.Type(Click(30, 5));
    live.Type(Click(9, 17));
    End();
    live.Shown().ExpectPicture(ViewOf(9, 17), kViewWidth);
}

TEST_F(ClickToAim, TakesCornersAndTheMiddle) {
    for (const auto& [column, row] : {std::pair(0, 0), {47, 23}, {24, 12}}) {
        live.Type(Click(column, row));
    }
    End();
    live.Shown().ExpectPicture(ViewOf(24, 12), kViewWidth);
}

TEST_F(ClickToAim, LeavesOutWhatIsNoClickOnThePicture) {
    live.Type(Click(kSide, 3) + Click(3, kSide / 2) + Click(99, 30));
    live.Type("\033[<0;5;5m\033[<2;5;5M\033[<35;5;5M\033[<64;5;5M\033[M !!z");
    End();
    for (int row = 0; row < kRows - 1; ++row) {
        for (int column = kSide; column < kColumns; ++column) {
            ASSERT_EQ(live.Shown().At(column, row).glyph, " ") << column << ' ' << row;
        }
    }
}

TEST_F(ClickToAim, UsesTheMouseOnlyWhileItRuns) {
    EXPECT_TRUE(live.Shown().HasMode(1000));
    EXPECT_TRUE(live.Shown().HasMode(1006));
    EXPECT_TRUE(live.Shown().HasMode(1049));
    End();
    EXPECT_FALSE(live.Shown().HasMode(1000));
    EXPECT_FALSE(live.Shown().HasMode(1006));
    EXPECT_FALSE(live.Shown().HasMode(1049));
    EXPECT_TRUE(live.Shown().HasMode(25));
}

TEST(ClickToAimAtAPoint, WritesTheViewThatHasItInItsMiddle) {
    const Picture fisheye = Slopes(256, 256);
    const ExampleFolder folder(fisheye);
    for (const auto& [name, mount] :
         {std::pair("ceiling", MountTypeCeiling), std::pair("table", MountTypeTable)}) {
        folder.OutputOf("click-to-aim",
                        {name, folder.Fisheye(), "0.6", "0.3", folder.File("view.png")});
        const Picture view = ReadPng(folder.File("view.png"));
        ExpectSamePixels(view, FlattenedByLibrary(fisheye, AimedAt(mount, 0.6F, 0.3F), 640, 360));
        // A degree is 1.4 pixels of this lens.
        const Color middle = ColorAt(view, 320, 180);
        EXPECT_NEAR(middle[0], 0.6 * 256, 2.5) << name;
        EXPECT_NEAR(middle[1], 0.3 * 256, 2.5) << name;
    }
}

}  // namespace
