#ifndef KIVFISHEYE_FUZZ_KERNELS_LISTS_H
#define KIVFISHEYE_FUZZ_KERNELS_LISTS_H

#include <cstddef>
#include <vector>

#include "KernelsCheck.h"
#include "KernelsDistances.h"
#include "support/OutlineModel.h"

/// Expects `fill(list)` to leave what `expectedOf(before)` makes of a list of so many floats.
template <class Job, class Fill, class ExpectedOf>
void CheckList(const Job& job, ListForm form, std::size_t count, Fill&& fill,
               ExpectedOf&& expectedOf) {
    CheckStores<float>(
        count, [&](float* list, GuardedBuffer::Side) { fill(list); }, expectedOf,
        Attempt{job, NameOf(form)});
}

/// A list that a form fills from its first to its last float.
template <class Job, class Fill>
void CheckFullList(const Job& job, ListForm form, const std::vector<float>& expected, Fill&& fill) {
    CheckList(job, form, expected.size(), fill,
              [&](const std::vector<float>&) { return expected; });
}

/// What the forms make of a list, the scalar form first, for the distance between them.
class FormDistance {
public:
    explicit FormDistance(double bound) : m_bound(bound) {}

    template <class Job>
    void Add(const Job& job, const std::vector<float>& list) {
        if (m_scalar.empty()) {
            m_scalar = list;
        } else {
            CheckNearScalar(m_scalar, list, m_bound, Attempt{job, "lanes"});
        }
    }

private:
    double m_bound;
    std::vector<float> m_scalar;
};

#endif
