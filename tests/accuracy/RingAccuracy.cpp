#include <algorithm>
#include <cmath>
#include <vector>

#include "accuracy/GeometryCheck.h"
#include "accuracy/PictureAccuracy.h"
#include "support/RingKernelSet.h"
#include "support/RingModel.h"
#include "support/WallModel.h"

namespace {

/// The angles of the first and the last column, in the order of the columns.
struct Turn {
    float first;
    float last;
};

/// One unrolling of one mount.
struct RingCase {
    Mount mount;
    Ring ring;
    int bytesPerPixel;
    float pan;
    bool isDual;

    ExactRing Exact(Path path, KernelForm form) const {
        if (path == Path::Direct) {
            return isDual ? ExactRing::DualDirect(mount, ring, pan, form)
                          : ExactRing::Direct(mount, ring, pan, form);
        }
        return isDual ? ExactRing::DualTable(mount, ring, form)
                      : ExactRing::Table(mount, ring, form);
    }

    std::vector<ExactPlace> ExactPlaces(Path path) const {
        const ExactRing exact = Exact(path, KernelForm::C);
        std::vector<ExactPlace> places;
        for (int y = 0; y < ring.dstHeight; ++y) {
            for (int x = 0; x < ring.dstWidth; ++x) {
                const ExactPoint point = exact.PointAt(x, y);
                places.push_back(
                    {point.column, point.row, BeyondFrame(point.column, point.row, ring.srcWidth)});
            }
        }
        return places;
    }

    SourcePlaces Places(Path path, KernelForm form, const CoordinateSource& source) const {
        const RingKernelSet kernels = RingKernelsOf(mount, form, 8 * bytesPerPixel);
        if (path == Path::Table) {
            return PlacesOfTable(isDual ? *kernels.buildDual : *kernels.build, ring,
                                 ring.innerRadiusRatio, bytesPerPixel);
        }
        std::vector<unsigned char> picture(ring.OutputBytes());
        (isDual ? *kernels.convertDual : *kernels.convert)(
            ring.srcWidth, ring.srcHeight, ring.srcStride, source.Pixels(bytesPerPixel).data(),
            ring.dstWidth, ring.dstHeight, ring.dstStride, picture.data(), ring.radiusX,
            ring.radiusY, ring.innerRadiusRatio, pan);
        return PlacesOfPicture(picture, bytesPerPixel);
    }

    Conversion Name(Path path) const {
        if (path == Path::Direct) {
            return isDual ? Conversion::DualDirect : Conversion::FullDirect;
        }
        return isDual ? Conversion::DualTable : Conversion::FullTable;
    }

    void AddTo(PictureFigures& figures, Path path, const CoordinateSource& source) const {
        GeometryCheck check(figures, Name(path), source.Side(), ExactPlaces(path));
        for (const KernelForm form : kKernelForms) {
            if (HasForm(Name(path), form)) {
                check.Add(form, Places(path, form, source), Bounds(path, form));
            }
        }
    }

private:
    Turn TurnOf(Path path) const {
        const float start = path == Path::Direct ? pan * 0.0174532924F : 0.0F;
        const float turn = isDual ? 3.14159274F : 6.28318548F;
        if (path == Path::Direct && !isDual) {
            return {start, start + turn};
        }
        return mount == Mount::Table ? Turn{-start, turn - start} : Turn{start + turn, start};
    }

    /// The geometry with the columns' angles as a form's sums have them.
    ExactRing Summed(Path path, KernelForm form) const {
        const Turn turn = TurnOf(path);
        return Exact(path, form)
            .WithAngles(AnglesOfForm(form, turn.first, turn.last, ring.dstWidth));
    }

    /// How far two geometries are apart at the rim, where they are most.
    Reach DistanceAtRim(const ExactRing& one, const ExactRing& other) const {
        const int rimRow = mount == Mount::Table ? ring.dstHeight / (isDual ? 2 : 1) - 1 : 0;
        Reach largest{0.0, 0.0};
        for (int x = 0; x < ring.dstWidth; ++x) {
            const ExactPoint a = one.PointAt(x, rimRow);
            const ExactPoint b = other.PointAt(x, rimRow);
            largest.column = std::max(largest.column, std::fabs(a.column - b.column));
            largest.row = std::max(largest.row, std::fabs(a.row - b.row));
        }
        return largest;
    }

    /// A form is off by what its sums of angles drift, and a little for the other roundings. To
    /// that the nearest pixel adds up to one and a half from a pixel that is cut off.
    FormBounds Bounds(Path path, KernelForm form) const {
        const ExactRing scalar = Summed(path, KernelForm::C);
        const ExactRing summed = Summed(path, form);
        const Reach drift = DistanceAtRim(summed, Exact(path, form));
        const Reach apart = DistanceAtRim(summed, scalar);
        return {{drift.column + summed.ErrorOfColumn(), drift.row + summed.ErrorOfRow()},
                {std::floor(1.5 + apart.column + summed.ErrorOfColumn() + scalar.ErrorOfColumn()),
                 std::floor(1.5 + apart.row + summed.ErrorOfRow() + scalar.ErrorOfRow())}};
    }
};

}  // namespace

void AddRing(GeometryGenerator& random, const CoordinateSource& source, PictureFigures& figures) {
    const int bytesPerPixel = random.NextBytesPerPixel();
    for (const bool isDual : {false, true}) {
        const int maxWidth = isDual ? source.Side() : 2 * source.Side();
        const Ring ring{random.NextFrames(source.Side(), maxWidth, bytesPerPixel),
                        random.Between(0.0F, 0.8F)};
        const float pan = random.Between(0.0F, 360.0F);
        for (const Mount mount : {Mount::Table, Mount::Ceiling}) {
            for (const Path path : {Path::Direct, Path::Table}) {
                RingCase{mount, ring, bytesPerPixel, pan, isDual}.AddTo(figures, path, source);
            }
        }
    }
}
