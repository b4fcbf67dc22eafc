#include <cstring>
#include <memory>

#include "Arguments.h"
#include "Commands.h"
#include "Failure.h"
#include "Progress.h"

namespace KivFisheyeTools {

namespace {

struct SnapshotArguments {
    std::string input;
    std::string output;
    ViewArguments view;
    AngleArguments angles;
};

/// A still picture that the library made and that it takes back.
class Snapshot {
public:
    explicit Snapshot(const ViewCamera& camera) : m_camera(camera) {
        m_result = camera->Snapshot(&m_block);
    }
    ~Snapshot() { m_camera->FreeSnapshotMemory(m_block); }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    Picture Copy() const {
        if (m_result != kResultOk) {
            throw Failure(m_result == kResultOutOfMemory
                              ? "the library has not enough memory for a snapshot"
                              : "the library makes no snapshot of this picture");
        }
        KivFisheyeLib::SnapshotHeader header{};
        std::memcpy(&header, m_block, sizeof header);
        if (header.height >= 0) {
            throw Failure("the library made a snapshot that stands on its head");
        }
        Picture picture(static_cast<std::uint32_t>(header.width),
                        static_cast<std::uint32_t>(-header.height), header.bitsPerPixel / 8U);
        if (header.imageSize != picture.pixels.size()) {
            throw Failure("the library made a snapshot of another size than it says");
        }
        std::memcpy(picture.pixels.data(), m_block + header.size, header.imageSize);
        return picture;
    }

private:
    const ViewCamera& m_camera;
    unsigned char* m_block = nullptr;
    ResultCode m_result = kResultNotReady;
};

void TakeSnapshot(const SnapshotArguments& arguments) {
    CheckIsNoInput(arguments.output, {arguments.input});
    CheckAngles(arguments.angles, ViewOfName(arguments.view.view));
    CheckView(arguments.view, OutputKind::Picture);
    Progress progress;
    progress.Show("reading " + arguments.input);
    Picture input = ReadPicture(arguments.input, BytesPerPixelOf(arguments.view));
    if (!HasExtent(arguments.view.lens)) {
        throw Failure("the lens image is too small for a snapshot");
    }
    const ViewCamera camera(arguments.view);
    camera.SetInput(&input);
    Turn(arguments.angles, arguments.view, camera, &progress);
    progress.Show("flattening");
    const Picture picture = Snapshot(camera).Copy();
    progress.Show("writing " + arguments.output);
    WritePicture(arguments.output, picture);
}

}  // namespace

void AddSnapshotCommand(CLI::App* app) {
    const auto arguments = std::make_shared<SnapshotArguments>();
    CLI::App* command = app->add_subcommand(
        "snapshot", "Flatten one picture in exactly the size that the library recommends");
    command->option_defaults()->always_capture_default();
    AddPictureInput(command, &arguments->input);
    AddOutput(command, &arguments->output, PictureEndings(),
              "The file to write. A dual panorama of odd height has a black last row");
    AddView(command, &arguments->view.view)->required();
    AddAngleOptions(command, &arguments->angles);
    AddMount(command, &arguments->view.mount)->required();
    AddViewedLensOptions(command, &arguments->view);
    AddFormat(command, &arguments->view.format);
    command->callback([arguments] { TakeSnapshot(*arguments); });
}

}  // namespace KivFisheyeTools
