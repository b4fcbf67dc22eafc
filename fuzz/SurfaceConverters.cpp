#include <cmath>
#include <cstring>

#include "DownwardFisheyeAlgo.h"
#include "FrontwardFisheyeAlgo.h"
#include "SurfaceFunctions.h"
#include "UpwardFisheyeAlgo.h"

// The converters of all mounts: sizes of any remainder, strides of any length.

namespace {

enum class Kind { Simple, Table };
enum class View { Full, Dual, Wall };

struct Job {
    explicit Job(FuzzInput& choices);

    bool HasSource() const {
        return source.width > 0 && source.height > 0 && source.RowBytes() <= source.stride;
    }
    bool HasTable() const {
        const bool isEmpty = output.width == 0 || output.height == 0;
        return isEmpty || HasSource() || source.width == 0 || source.height == 0;
    }

    FrameShape source;
    FrameShape output;
    float radiusX;
    float radiusY;
    float shape;
    bool hasPan;
    float pan;
};

std::uint32_t AnyStride(FuzzInput& choices, const FrameShape& shape) {
    const auto rowBytes = static_cast<std::uint32_t>(shape.RowBytes());
    switch (choices.Between(0, 7)) {
        case 0:
            return static_cast<std::uint32_t>(choices.Between(0, 64));
        case 1:
        case 2:
            return rowBytes;
        default:
            return rowBytes + static_cast<std::uint32_t>(choices.Between(0, 9));
    }
}

std::uint32_t Side(FuzzInput& choices, int most) {
    return choices.OnceIn(24) ? 0 : static_cast<std::uint32_t>(choices.Between(1, most));
}

FrameShape AnyShape(FuzzInput& choices, int bytesPerPixel) {
    const bool isLong = choices.OnceIn(8);
    FrameShape shape{Side(choices, isLong ? 400 : 40), Side(choices, isLong ? 3 : 24), 0,
                     bytesPerPixel};
    shape.stride = AnyStride(choices, shape);
    return shape;
}

Job::Job(FuzzInput& choices) : source(AnyShape(choices, choices.OnceIn(2) ? 3 : 4)) {
    output = AnyShape(choices, source.bytesPerPixel);
    const bool isUsual = choices.OnceIn(2);
    radiusX = isUsual ? 0.3F + 0.0007F * choices.Byte() : choices.Number(0.0F, 1.0F);
    radiusY = isUsual ? 0.3F + 0.0007F * choices.Byte() : choices.Number(0.0F, 1.0F);
    // An inner radius or a latitude, as the mount has it.
    shape = isUsual ? 0.003F * choices.Byte() : choices.Number(-1.0F, 100.0F);
    hasPan = !choices.OnceIn(4);
    pan = choices.Number(-10.0F, 370.0F);
}

PictureRule SimpleRule(View view, const Job& job) {
    PictureRule rule{job.output.height, PictureRule::Padding::Cleared};
    if (view == View::Dual) {
        rule.writtenRows = job.output.height / 2 * 2;
    }
    return rule;
}

PictureRule TableRule(View view, const Job& job) {
    PictureRule rule{job.output.height, PictureRule::Padding::Kept};
    // The smallest pan that turns is 2 to the power of -23.
    const bool isTurned = view != View::Wall && job.hasPan && !(job.pan < 1.1920929e-7F);
    const bool isNowhere = isTurned && !std::isfinite(job.pan);
    if (!job.HasTable() || isNowhere) {
        rule.writtenRows = 0;
    } else if (view == View::Dual) {
        rule.writtenRows = job.output.height / 2 * 2;
        rule.clearsOtherRows = !isTurned;
    }
    return rule;
}

PictureRule RuleOf(Kind kind, View view, const Job& job) {
    PictureRule rule = kind == Kind::Simple ? SimpleRule(view, job) : TableRule(view, job);
    const auto isWithin = [](float number, float least, float most) {
        return number >= least && number <= most;
    };
    const bool isUsual = isWithin(job.radiusX, 0.05F, 0.49F) &&
                         isWithin(job.radiusY, 0.05F, 0.49F) && isWithin(job.shape, 0.0F, 0.8F) &&
                         isWithin(job.pan, -360.0F, 720.0F);
    rule.isBlack = !job.HasSource() || std::isnan(job.radiusX) || std::isnan(job.radiusY);
    rule.isFull = view != View::Wall && isUsual && !rule.isBlack;
    return rule;
}

template <View view, Kind kind, class Converter>
void Convert(Converter& converter, const Job& job, int bits, const unsigned char* src,
             unsigned char* dst) {
    if constexpr (view != View::Wall) {
        if (kind == Kind::Simple || job.hasPan) {
            bits == 24 ? converter.CvtRGB24(job.pan, src, dst)
                       : converter.CvtRGB32(job.pan, src, dst);
            return;
        }
    }
    if constexpr (view == View::Wall || kind == Kind::Table) {
        bits == 24 ? converter.CvtRGB24(src, dst) : converter.CvtRGB32(src, dst);
    }
}

/// Inits the converter and says whether that threw.
template <class Converter>
ResultCode Init(Converter& converter, const Job& job) {
    return ResultOf([&] {
        const auto asInt = [](std::uint32_t number) { return static_cast<int>(number); };
        converter.Init(asInt(job.source.width), asInt(job.source.height), asInt(job.source.stride),
                       asInt(job.output.width), asInt(job.output.height), asInt(job.output.stride),
                       8 * job.output.bytesPerPixel, job.radiusX, job.radiusY, job.shape);
        return kResultOk;
    });
}

template <class Converter, View view, Kind kind>
void Run(Play& play, const Job& job) {
    const auto source = MakeSource(play.choices, job.source);
    const auto output = MakeGuarded(play.choices, job.output.Bytes());
    Converter converter;
    if (play.choices.OnceIn(16)) {
        Convert<view, kind>(converter, job, 24, source->data(), output->data());
        Expect(IsFilledWith(output->data(), output->size(), kFill),
               "a converter without sizes wrote");
    }
    ExpectResult(Init(converter, job),
                 kind == Kind::Table && !job.HasTable() ? kThrown : kResultOk);
    PictureRule rule = RuleOf(kind, view, job);
    int bits = 8 * job.output.bytesPerPixel;
    if (kind == Kind::Table && bits == 24 && play.choices.OnceIn(8)) {
        // Pixels of 32 bits do not fit in what a table for 24 bits says.
        bits = 32;
        rule = {0, PictureRule::Padding::Kept};
    }
    Convert<view, kind>(converter, job, bits, source->data(), output->data());
    Expect(output->IsSurroundingUntouched(), "bytes around the output changed");
    // Where rows overlap, the halves of a direct dual conversion do so in an order of their own.
    const bool isOverlapping = job.output.RowBytes() > job.output.stride;
    if (kind == Kind::Table || view != View::Dual || !isOverlapping) {
        CheckPicture(output->data(), job.output, job.source, rule);
    }
}

using Runner = void (*)(Play& play, const Job& job);

}  // namespace

void ConvertByConverter(Play& play) {
    struct Entry {
        const char* name;
        Runner run;
    };
    static constexpr Entry kEntries[] = {
        {"TableSimple",
         Run<UpwardFisheyeAlgoNS::CPanoramaSimpleConverter, View::Full, Kind::Simple>},
        {"Table", Run<UpwardFisheyeAlgoNS::CPanoramaConverter, View::Full, Kind::Table>},
        {"TableDualSimple",
         Run<UpwardFisheyeAlgoNS::CDualPanoramaSimpleConverter, View::Dual, Kind::Simple>},
        {"TableDual", Run<UpwardFisheyeAlgoNS::CDualPanoramaConverter, View::Dual, Kind::Table>},
        {"CeilingSimple",
         Run<DownwardFisheyeAlgoNS::CPanoramaSimpleConverter, View::Full, Kind::Simple>},
        {"Ceiling", Run<DownwardFisheyeAlgoNS::CPanoramaConverter, View::Full, Kind::Table>},
        {"CeilingDualSimple",
         Run<DownwardFisheyeAlgoNS::CDualPanoramaSimpleConverter, View::Dual, Kind::Simple>},
        {"CeilingDual",
         Run<DownwardFisheyeAlgoNS::CDualPanoramaConverter, View::Dual, Kind::Table>},
        {"WallSimple",
         Run<FrontwardFisheyeAlgoNS::CPanoramaSimpleConverter, View::Wall, Kind::Simple>},
        {"Wall", Run<FrontwardFisheyeAlgoNS::CPanoramaConverter, View::Wall, Kind::Table>}};
    const Entry entry = play.choices.OneOf(kEntries);
    BeginOperation(entry.name);
    const Job job(play.choices);
    play.work.Take({job.output.width, job.output.height});
    entry.run(play, job);
}
