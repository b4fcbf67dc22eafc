#include "ToolError.h"

namespace {

std::vector<std::string> Sweep(const std::string& output, const std::string& from,
                               const std::string& to, const std::string& frames,
                               const std::vector<std::string>& options = {}) {
    std::vector<std::string> arguments = {"sweep",   "input.png", output, "--mount",
                                          "ceiling", "--from",    from,   "--to",
                                          to,        "--frames",  frames};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

const std::vector<ErrorCase> kSweepCases = {
    {"SweepWithoutOutput", {"sweep", "input.png"}, kUsage, "OUTPUT"},
    {"SweepWithoutMount",
     {"sweep", "input.png", "views", "--from", "0,0,1", "--to", "0,0,2", "--frames", "2"},
     kUsage,
     "--mount"},
    {"SweepWithoutFrames",
     {"sweep", "input.png", "views", "--mount", "table", "--from", "0,0,1", "--to", "0,0,2"},
     kUsage,
     "--frames"},
    {"SweepOfNoFrames", Sweep("views", "0,0,1", "0,0,2", "0"), kUsage, "from 1 to 999999"},
    {"SweepOfTooManyFrames", Sweep("views", "0,0,1", "0,0,2", "1000000"), kUsage,
     "from 1 to 999999"},
    {"SweepOfHalfAFrame", Sweep("views", "0,0,1", "0,0,2", "2.5"), kUsage,
     "--frames: '2.5' is not a whole number from 1 to 999999"},
    {"SweepOfFramesWithExponent", Sweep("views", "0,0,1", "0,0,2", "1e3"), kUsage,
     "--frames: '1e3' is not a whole number from 1 to 999999"},
    {"SweepFromTwoNumbers", Sweep("views", "0,0", "0,0,2", "2"), kUsage, "3 finite numbers"},
    {"SweepToInfinity", Sweep("views", "0,0,1", "0,inf,2", "2"), kUsage, "3 finite numbers"},
    {"SweepFromOneNumber", Sweep("views", "0", "0,0,2", "2"), kUsage,
     "--from: '0' is not 3 finite numbers"},
    {"SweepOfAPanoramaFromThreeNumbers", Sweep("views", "0,0,1", "90", "2", {"--view", "full"}),
     kUsage, "--from: '0,0,1' is not a finite number: a panorama has a pan and nothing else"},
    {"SweepOfAPanoramaToInfinity", Sweep("views", "0", "inf", "2", {"--view", "dual"}), kUsage,
     "--to: 'inf' is not a finite number"},
    {"SweepOfWallDual",
     {"sweep", "input.png", "views", "--mount", "wall", "--view", "dual", "--from", "0", "--to",
      "90", "--frames", "2"},
     kUsage,
     "a wall camera has no dual panorama"},
    {"SweepOfUnknownView", Sweep("views", "0", "90", "2", {"--view", "half"}), kUsage, "half"},
    {"SweepFromSmallZoom", Sweep("views", "0,0,0.9", "0,0,2", "2"), kUsage, "--from: the zoom"},
    {"SweepToLargeZoom", Sweep("views", "0,0,1", "0,0,10.5", "2"), kUsage, "--to: the zoom"},
    {"SweepIntoAFile", Sweep("file", "0,0,1", "0,0,2", "2"), kUsage, "file is neither"},
    {"SweepIntoItsInput", Sweep("input.png", "0,0,1", "0,0,2", "2"), kUsage,
     "cannot write input.png"},
    {"SweepIntoAFolderLikeAPicture", Sweep("folder.png", "0,0,1", "0,0,2", "2"), kUsage,
     "cannot write folder.png"},
    {"SweepOfOtherVideo", Sweep("views.MKV", "0,0,1", "0,0,2", "2"), kUsage,
     "cannot write views.MKV: it needs the name of a folder"},
    {"SweepOfMovingPicture", Sweep("views.gif", "0,0,1", "0,0,2", "2"), kUsage,
     "cannot write views.gif"},
    {"SweepOfNothingButAnEnding", Sweep("./.mp4", "0,0,1", "0,0,2", "2"), kUsage,
     "cannot write ./.mp4"},
    {"SweepUnderAFile", Sweep("text.png/views", "0,0,1", "0,0,2", "2"), kFailure, "text.png/views"},
    {"SweepIntoAMissingFolder", Sweep("none/sweep.mp4", "0,0,1", "0,0,2", "2"), kFailure,
     "none/sweep.mp4"},
    {"SweepRateOfPictures", Sweep("views", "0,0,1", "0,0,2", "2", {"--fps", "25"}), kUsage,
     "--fps"},
    {"SweepRateOfNothing", Sweep("o.mp4", "0,0,1", "0,0,2", "2", {"--fps", "0"}), kUsage, "--fps"},
    {"SweepOfOddHeight", Sweep("o.mp4", "0,0,1", "0,0,2", "2", {"--size", "64x33"}), kUsage,
     "must be even"},
    {"SweepOfMissing",
     {"sweep", "missing.png", "views", "--mount", "table", "--from", "0,0,1", "--to", "0,0,2",
      "--frames", "2"},
     kFailure,
     "missing.png"},
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Sweep, ToolError, testing::ValuesIn(kSweepCases),
                         [](const auto& instance) { return std::string(instance.param.name); });
