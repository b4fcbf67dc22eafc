#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include "Arguments.h"
#include "Commands.h"
#include "Failure.h"
#include "Flattener.h"
#include "OutputFile.h"
#include "Progress.h"
#include "StopRequest.h"
#include "VideoReader.h"
#include "VideoWriter.h"

namespace KivFisheyeTools {

namespace {

namespace fs = std::filesystem;

constexpr double kUsualFrameRate = 25.0;
constexpr std::uint32_t kMostFrames = 999999;

struct SweepArguments {
    std::string input;
    std::string output;
    ViewArguments view;
    std::string from;
    std::string to;
    std::uint32_t frames = 0;
    std::optional<double> frameRate;
};

KivFisheyeLib::ViewType ViewOf(const SweepArguments& arguments) {
    return ViewOfName(arguments.view.view);
}

/// A part of the way from one set of numbers to another, whose first is the pan. A panorama has no
/// more than that, and keeps the tilt and zoom of `present`.
Angles AnglesBetween(const std::vector<double>& from, const std::vector<double>& to, double part,
                     const Angles& present) {
    const auto between = [&](std::size_t i, float otherwise) {
        return i < from.size() ? static_cast<float>((1.0 - part) * from[i] + part * to.at(i))
                               : otherwise;
    };
    return {between(0, present.pan), between(1, present.tilt), between(2, present.zoom)};
}

/// The path of one picture of all, counted from 0.
std::string PicturePath(const SweepArguments& arguments, std::uint32_t index) {
    constexpr std::size_t kFewestDigits = 4;
    const std::size_t digits = std::max(kFewestDigits, std::to_string(arguments.frames).size());
    const std::string number = std::to_string(index + 1);
    return (fs::path(arguments.output) /
            (std::string(digits - number.size(), '0') + number + ".png"))
        .string();
}

void CheckAngles(const std::string& option, const std::string& text, KivFisheyeLib::ViewType view) {
    const bool isPanorama = view != KivFisheyeLib::ViewTypeVCam;
    const std::string complaint = ComplaintAboutNumbers(text, isPanorama ? 1 : 3);
    if (!complaint.empty()) {
        throw UsageError(option + ": " + complaint +
                         (isPanorama ? ": a panorama has a pan and nothing else" : ""));
    }
    if (!isPanorama) {
        const double zoom = NumbersOfText(text).at(2);
        if (zoom < 1.0 || zoom > 10.0) {
            throw UsageError(option + ": the zoom must be from 1 to 10");
        }
    }
}

/// Refuses names that a user would hardly give to a folder.
void CheckFolderName(const std::string& path) {
    static const std::set<std::string> endings = {
        ".png", ".jpg", ".jpeg", ".bmp", ".gif", ".tif",  ".tiff", ".webp", ".mp4",
        ".m4v", ".mov", ".avi",  ".mkv", ".ts",  ".webm", ".mpg",  ".mpeg", ".wmv"};
    // With a letter before it, a name that is nothing but an ending has one.
    if (endings.count(EndingOf("a" + fs::path(path).filename().string())) > 0) {
        throw UsageError("cannot write " + path +
                         ": it needs the name of a folder or a name with the ending .mp4");
    }
}

/// Refuses a folder with numbered pictures that would stay among those of this sweep.
void CheckOtherPictures(const std::string& folder, const std::set<std::string>& names) {
    std::set<std::string> others;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        const std::string name = entry.path().filename().string();
        const bool isNumber =
            entry.path().stem().string().find_first_not_of("0123456789") == std::string::npos;
        if (isNumber && EndingOf(name) == ".png" && names.count(name) == 0) {
            others.insert(name);
        }
    }
    if (!others.empty()) {
        throw UsageError(folder + " holds pictures of another sweep, such as " + *others.begin() +
                         ": remove them or name another folder");
    }
}

void CheckFolder(const SweepArguments& arguments) {
    CheckFolderName(arguments.output);
    std::error_code ignored;
    if (arguments.frameRate) {
        throw UsageError("--fps goes with a video, whose name ends with .mp4");
    }
    if (!fs::exists(arguments.output, ignored)) {
        return;
    }
    if (!fs::is_directory(arguments.output, ignored)) {
        throw UsageError(arguments.output + " is neither a folder nor a name with the ending .mp4");
    }
    std::set<std::string> names;
    for (std::uint32_t i = 0; i < arguments.frames; ++i) {
        const fs::path picture = PicturePath(arguments, i);
        CheckIsNoInput(picture.string(), {arguments.input});
        names.insert(picture.filename().string());
    }
    CheckOtherPictures(arguments.output, names);
}

void CheckUsage(const SweepArguments& arguments) {
    CheckAngles("--from", arguments.from, ViewOf(arguments));
    CheckAngles("--to", arguments.to, ViewOf(arguments));
    if (IsVideoName(arguments.output)) {
        CheckIsNoInput(arguments.output, {arguments.input});
        CheckView(arguments.view, OutputKind::Video);
    } else {
        CheckFolder(arguments);
        CheckView(arguments.view, OutputKind::Picture);
    }
}

void MakeFolder(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error) {
        throw Failure("cannot make the folder " + path + ": " + error.message());
    }
}

/// Tells in the end how many views were not as asked for.
class LimitedViews {
public:
    explicit LimitedViews(const ViewArguments& view) : m_view(view) {}

    void Note(std::uint32_t index, const Angles& asked, const Angles& taken) {
        if (!IsSameView(asked, taken) && ++m_count == 1) {
            m_first =
                "number " + std::to_string(index + 1) + ", " + WordsForLimit(m_view, asked, taken);
        }
    }

    void Tell(Progress* progress) const {
        if (m_count > 0) {
            progress->Say("the first of " + std::to_string(m_count) + " limited views, " + m_first);
        }
    }

private:
    const ViewArguments& m_view;
    std::uint32_t m_count = 0;
    std::string m_first;
};

/// Hands every view with its number to `take`, until a stop is asked for. Gives their number.
template <class Take>
std::uint32_t ShowViews(const SweepArguments& arguments, const Flattener& flattener,
                        Progress* progress, Take take) {
    const std::vector<double> from = NumbersOfText(arguments.from);
    const std::vector<double> to = NumbersOfText(arguments.to);
    const Angles present = flattener.Present();
    LimitedViews limited(arguments.view);
    std::uint32_t index = 0;
    while (index < arguments.frames && StopRequest::Signal() == 0) {
        const double part = arguments.frames > 1 ? index / (arguments.frames - 1.0) : 0.0;
        const Angles asked = AnglesBetween(from, to, part, present);
        limited.Note(index, asked, flattener.Turn(asked));
        flattener.Flatten();
        take(index);
        ++index;
        progress->ShowFrames("sweeping", index, arguments.frames);
    }
    limited.Tell(progress);
    return index;
}

void SweepToVideo(const SweepArguments& arguments, const Flattener& flattener, Progress* progress) {
    constexpr int kMostTicks = 1000000;
    const StopRequest stop;
    VideoShape shape{};
    shape.frameRate = av_d2q(arguments.frameRate.value_or(kUsualFrameRate), kMostTicks);
    shape.timeBase = av_inv_q(shape.frameRate);
    VideoWriter writer(arguments.output, flattener.Output(), shape);
    const std::uint32_t frames =
        ShowViews(arguments, flattener, progress, [&](std::uint32_t index) {
            writer.Write(flattener.Output(), {index, 1});
        });
    if (frames > 0) {
        writer.Finish();
    }
    CheckStopped(frames, "frame", arguments.output);
}

void SweepToPictures(const SweepArguments& arguments, const Flattener& flattener,
                     Progress* progress) {
    const StopRequest stop;
    MakeFolder(arguments.output);
    const std::uint32_t pictures =
        ShowViews(arguments, flattener, progress, [&](std::uint32_t index) {
            WritePicture(PicturePath(arguments, index), flattener.Output());
        });
    CheckStopped(pictures, "picture", arguments.output);
}

void Sweep(const SweepArguments& arguments) {
    CheckUsage(arguments);
    const bool isVideo = IsVideoName(arguments.output);
    Progress progress;
    progress.Show("reading " + arguments.input);
    VideoReader reader(arguments.input);
    Flattener flattener(arguments.view, {reader.Width(), reader.Height()},
                        isVideo ? OutputKind::Video : OutputKind::Picture);
    reader.Read(flattener.Input());
    if (isVideo) {
        SweepToVideo(arguments, flattener, &progress);
    } else {
        SweepToPictures(arguments, flattener, &progress);
    }
}

}  // namespace

void AddSweepCommand(CLI::App* app) {
    const auto arguments = std::make_shared<SweepArguments>();
    arguments->view.view = NameOf(KivFisheyeLib::ViewTypeVCam);
    CLI::App* command = app->add_subcommand(
        "sweep",
        "Turn a virtual camera or a panorama evenly from one view of a picture to another");
    command->option_defaults()->always_capture_default();
    AddPictureInput(command, &arguments->input);
    command
        ->add_option("OUTPUT", arguments->output,
                     "The folder for the pictures 0001.png, 0002.png and so on, without older ones "
                     "that would stay, or an .mp4 file")
        ->required()
        ->check(FileName("output").description("a folder or {.mp4}"))
        ->type_name("FILE");
    AddView(command, &arguments->view.view);
    command
        ->add_option("--from", arguments->from,
                     "Pan, tilt and zoom of the first view; of a panorama the pan alone. A dual "
                     "panorama at exactly 180 is that at 0: a sweep that hits this pan jumps there "
                     "for one view")
        ->required()
        ->type_name("P[,T,Z]");
    command
        ->add_option("--to", arguments->to,
                     "Pan, tilt and zoom of the last view; of a panorama the pan alone")
        ->required()
        ->type_name("P[,T,Z]");
    command->add_option("--frames", arguments->frames, "Number of views, with the first and last")
        ->required()
        ->transform(WholeNumberIn(1, kMostFrames))
        ->type_name("COUNT")
        ->default_str("");
    command->add_option("--fps", arguments->frameRate, "Video: views in a second; 25 by default")
        ->check(NumberIn(0.1, 1000.0))
        ->type_name("RATE");
    AddViewOptions(command, &arguments->view);
    command->callback([arguments] { Sweep(*arguments); });
}

}  // namespace KivFisheyeTools
