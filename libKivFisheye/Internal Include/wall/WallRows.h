#ifndef KIVFISHEYE_WALL_ROWS_H
#define KIVFISHEYE_WALL_ROWS_H

#include "ColumnAngles.h"
#include "Degrees.h"
#include "RunningAngle.h"
#include "wall/WallJob.h"

namespace wall {

constexpr Span kLongitudes{-kQuarterTurn, kQuarterTurn};

/// The rows of a panorama: latitudes, positive downward, that go on by rotation in every form, and
/// the lens's semi-axes for each radian off its axis.
class Rows {
public:
    explicit Rows(const WallJob& job)
        : latitude(AngleOf(-HalfAngle(job))),
          kx(job.radiusX * kQuarterTurnsPerRadian),
          ky(job.radiusY * kQuarterTurnsPerRadian),
          m_step(AngleOf(StepOf({-HalfAngle(job), HalfAngle(job)}, job.dstHeight))) {}

    void Next() { latitude.Advance(m_step); }

    RunningAngle<float> latitude;
    float kx;
    float ky;

private:
    static float HalfAngle(const WallJob& job) { return job.wallViewAngle * kDegreesToRadians; }

    RunningAngle<float> m_step;
};

}  // namespace wall

#endif
