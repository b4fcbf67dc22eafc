#include <gtest/gtest.h>

#include "ViewArguments.h"
#include "ViewCamera.h"

using KivFisheyeTools::Angles;
using KivFisheyeTools::IsSameView;
using KivFisheyeTools::ViewArguments;
using KivFisheyeTools::WordsForLimit;
using KivFisheyeTools::WordsForRemedy;

namespace {

ViewArguments ViewOf(const char* mount, const char* view) {
    ViewArguments arguments;
    arguments.mount = mount;
    arguments.view = view;
    return arguments;
}

bool IsSamePan(float asked, float taken) {
    return IsSameView({asked, 0.0F, 1.0F}, {taken, 0.0F, 1.0F});
}

constexpr const char* kZoomCure =
    "; it looks away from the lens's axis only at a zoom of 2 or more, which shows at most 90 "
    "degrees";

}  // namespace

TEST(SameView, DoesNotCountWholeTurns) {
    EXPECT_TRUE(IsSamePan(370.0F, 10.0F));
    EXPECT_TRUE(IsSamePan(-350.0F, 10.0F));
    EXPECT_TRUE(IsSamePan(-720.0F, 0.0F));
    // The two ends of the half turn that a remainder keeps.
    EXPECT_TRUE(IsSamePan(-180.0F, 180.0F));
    EXPECT_TRUE(IsSamePan(-180.0001F, 180.0001F));
    EXPECT_FALSE(IsSamePan(370.0F, 11.0F));
}

TEST(SameView, DoesNotCountTheTurnsOfAHugePan) {
    // The float nearest to 1e17 is 99999998430674944, which is 184 degrees beyond whole turns.
    EXPECT_TRUE(IsSamePan(1e17F, 184.0F));
    EXPECT_FALSE(IsSamePan(1e17F, 0.0F));
    EXPECT_FALSE(IsSamePan(1e17F, 185.0F));
    EXPECT_TRUE(IsSamePan(-1e17F, 176.0F));
}

TEST(SameView, IsThatOfAllAngles) {
    const Angles asked{10.0F, 30.0F, 3.0F};
    EXPECT_TRUE(IsSameView(asked, {10.0F, 30.0F, 3.0F}));
    EXPECT_FALSE(IsSameView(asked, {10.0F, 29.9F, 3.0F}));
    EXPECT_FALSE(IsSameView(asked, {10.0F, 390.0F, 3.0F}));
    EXPECT_FALSE(IsSameView(asked, {10.0F, 30.0F, 3.1F}));
}

TEST(LimitedView, OfAPanoramaBlamesAWallAlone) {
    const Angles asked{30.0F, 0.0F, 1.0F};
    const Angles taken{0.0F, 0.0F, 1.0F};
    EXPECT_EQ(WordsForLimit(ViewOf("wall", "full"), asked, taken),
              "is limited to pan 0 instead of pan 30; the panorama of a wall camera does not turn");
    for (const char* mount : {"ceiling", "table"}) {
        for (const char* view : {"full", "dual"}) {
            EXPECT_EQ(WordsForLimit(ViewOf(mount, view), asked, taken),
                      "is limited to pan 0 instead of pan 30");
        }
    }
}

TEST(LimitedView, NamesTheTiltsOfTheMount) {
    const Angles level{0.0F, 0.0F, 3.0F};
    EXPECT_EQ(WordsForLimit(ViewOf("table", "vcam"), {0.0F, 30.0F, 3.0F}, level),
              "is limited to pan 0, tilt 0 and zoom 3 instead of pan 0, tilt 30 and zoom 3; the "
              "tilt of a table camera is negative, from -90 to 0");
    EXPECT_EQ(WordsForLimit(ViewOf("ceiling", "vcam"), {0.0F, -30.0F, 3.0F}, level),
              "is limited to pan 0, tilt 0 and zoom 3 instead of pan 0, tilt -30 and zoom 3; the "
              "tilt of a ceiling camera is positive, from 0 to 90");
    for (const char* mount : {"ceiling", "table", "wall"}) {
        const float sign = mount == std::string("table") ? -1.0F : 1.0F;
        const std::string words = WordsForLimit(ViewOf(mount, "vcam"), {0.0F, sign * 80.0F, 3.0F},
                                                {0.0F, sign * 50.0F, 3.0F});
        EXPECT_EQ(words.find(';'), std::string::npos) << words;
    }
}

TEST(LimitedView, NamesTheZoomThatTiltsNeedAsWell) {
    const Angles wide{0.0F, 0.0F, 1.0F};
    const std::string words = WordsForLimit(ViewOf("table", "vcam"), {0.0F, 30.0F, 1.0F}, wide);
    EXPECT_NE(words.find("the tilt of a table camera is negative"), std::string::npos) << words;
    EXPECT_NE(words.find(kZoomCure), std::string::npos) << words;
    EXPECT_EQ(WordsForLimit(ViewOf("table", "vcam"), {0.0F, -30.0F, 1.0F}, wide),
              std::string("is limited to pan 0, tilt 0 and zoom 1 instead of pan 0, tilt -30 and "
                          "zoom 1") +
                  kZoomCure);
}

TEST(Remedy, IsTheFieldOfViewThatFitsBetweenTheMiddleAndTheRim) {
    const auto expect = [](const char* mount, const Angles& asked, const std::string& widest) {
        EXPECT_EQ(WordsForRemedy(ViewOf(mount, "vcam"), asked),
                  widest.empty() ? "" : "; --fov " + widest + " is the widest that looks there")
            << mount << asked.pan << ' ' << asked.tilt;
    };
    // Ceilings and tables look anywhere around the axis, so that their pan does not count.
    expect("ceiling", {200.0F, 70.25F, 3.0F}, "39");
    expect("table", {200.0F, -70.25F, 3.0F}, "39");
    expect("wall", {-70.25F, 60.0F, 3.0F}, "39");
    expect("wall", {10.0F, -70.25F, 3.0F}, "39");
    expect("ceiling", {0.0F, 20.0F, 1.5F}, "90");
    expect("ceiling", {0.0F, 85.0F, 3.0F}, "10");
    expect("ceiling", {0.0F, 85.1F, 3.0F}, "");
    expect("wall", {95.0F, 0.0F, 3.0F}, "");
}

TEST(Remedy, IsNoneForATiltOfAnotherMountOrAPanorama) {
    EXPECT_EQ(WordsForRemedy(ViewOf("ceiling", "vcam"), {0.0F, -60.0F, 3.0F}), "");
    EXPECT_EQ(WordsForRemedy(ViewOf("table", "vcam"), {0.0F, 60.0F, 3.0F}), "");
    EXPECT_EQ(WordsForRemedy(ViewOf("wall", "full"), {30.0F, 0.0F, 1.0F}), "");
}
