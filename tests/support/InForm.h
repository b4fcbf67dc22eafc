#ifndef KIVFISHEYE_TESTS_IN_FORM_H
#define KIVFISHEYE_TESTS_IN_FORM_H

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "MemoryUtils.h"
#include "support/GuardedBuffer.h"
#include "support/Joined.h"
#include "support/KernelForm.h"

/// The table that a family's builder of a form makes.
template <class Family, class Job>
std::vector<int> TableOf(KernelForm form, const Job& job) {
    CAlignedBufferT<int, 32> table;
    table.Allocate(static_cast<unsigned long long>(job.dstWidth) *
                   static_cast<unsigned long long>(job.dstHeight));
    Family::BuildInto(table, form, job);
    return {table.data(), table.data() + table.count()};
}

/// A family's kernels in one form, beside the model of that form. What the family says of its
/// converters is of the form that this processor gives them.
template <class Family, KernelForm form>
struct InForm : Family {
    static constexpr KernelForm kForm = form;

    /// The form's direct conversion: a panorama, a pan where it turns, the source and the output.
    template <class... Arguments>
    static void ConvertByKernel(const Arguments&... arguments) {
        Family::ConvertByKernel(form, arguments...);
    }

    /// The form's table, as its kernel and as the model have it.
    template <class Job>
    static std::vector<int> BuildTable(const Job& job) {
        return TableOf<Family>(form, job);
    }
    template <class Job>
    static std::vector<int> ExpectedEntries(const Job& job, int bytesPerPixel = Family::kBytes,
                                            KernelForm other = form) {
        return Family::ExpectedEntries(job, bytesPerPixel, other);
    }

    /// What this form makes of a position half way between two pixels, the first of which is given.
    static int TieAbove(int pixel) {
        if (form == KernelForm::SSE41) {
            return pixel + pixel % 2;
        }
        return form == KernelForm::AVX ? pixel + 1 : pixel;
    }
};

template <class Family>
using InScalars = InForm<Family, KernelForm::C>;
template <class Family>
using InFourLanes = InForm<Family, KernelForm::SSE41>;
template <class Family>
using InEightLanes = InForm<Family, KernelForm::AVX>;

/// The families in each form that a machine of this kind may have: of direct conversions, and of
/// builders of tables.
template <class Families>
struct Forms {
#if defined(__x86_64__)
    using Direct = typename Joined<typename Mapped<InScalars, Families>::Types,
                                   typename Mapped<InFourLanes, Families>::Types>::Types;
    using Builders = typename Joined<Direct, typename Mapped<InEightLanes, Families>::Types>::Types;
#else
    using Direct = typename Mapped<InScalars, Families>::Types;
    using Builders = Direct;
#endif
};

/// A test of kernels in one form, where the processor can run it.
template <class Family, class Base = testing::Test>
class FormTest : public Base {
protected:
    void SetUp() override {
        if (!CanRun(Family::kForm)) {
            GTEST_SKIP() << "this processor lacks the instructions of " << NameOf(Family::kForm);
        }
    }
};

/// Expects a form's builder to give its model's entries in memory that ends, or starts, at a guard,
/// and to store nothing beyond them.
template <class Family, class Job>
void ExpectTableAtGuards(const Job& job) {
    const std::vector<int> expected = Family::ExpectedEntries(job);
    for (const auto side : {GuardedBuffer::Side::EndsAtGuard, GuardedBuffer::Side::StartsAtGuard}) {
        GuardedBuffer memory(expected.size() * sizeof(int), side, 0xCD);
        auto table = CAlignedBufferT<int, 32>::Borrow(reinterpret_cast<int*>(memory.data()),
                                                      expected.size());
        Family::BuildInto(table, Family::kForm, job);
        std::vector<int> entries(expected.size());
        std::memcpy(entries.data(), memory.data(), memory.size());
        ASSERT_EQ(entries, expected) << job;
        ASSERT_TRUE(memory.IsSurroundingUntouched()) << job;
    }
}

/// Names of families with that of the form.
template <class FamilyNames>
struct FormNames {
    template <class Family>
    static std::string GetName(int index) {
        return FamilyNames::template GetName<Family>(index) + "_" + NameOf(Family::kForm);
    }
};

#endif
