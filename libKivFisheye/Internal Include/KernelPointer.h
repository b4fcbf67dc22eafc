#ifndef KIVFISHEYE_KERNEL_POINTER_H
#define KIVFISHEYE_KERNEL_POINTER_H

#include <atomic>
#include <type_traits>

#include "instrset_detect.h"

/// The forms that a kernel may be compiled in.
enum class Form { C, SSE2, SSE41, AVX };

// From the processor's level to the form that a family runs in. A family follows exactly one of the
// three, and one with an SSE4.1 form never falls back to SSE2.
constexpr Form Sse2OrC(int level) {
    return level >= 2 ? Form::SSE2 : Form::C;
}
constexpr Form Sse41OrC(int level) {
    return level >= 5 ? Form::SSE41 : Form::C;
}
constexpr Form AvxSse41OrC(int level) {
    return level >= 7 ? Form::AVX : Sse41OrC(level);
}

/// The pointer that a kernel family is called through. It starts at the family's first-call
/// function, which replaces it. Threads that race there all store the same value, so the accesses
/// need to be atomic and nothing more.
template <class Signature>
class KernelPointer;

template <class Result, class... Arguments>
class KernelPointer<Result(Arguments...)> {
public:
    using Signature = Result(Arguments...);
    using Kernel = Signature*;

    constexpr explicit KernelPointer(Kernel firstCall) : m_kernel(firstCall) {}

    Kernel Load() const { return m_kernel.load(std::memory_order_relaxed); }
    void Store(Kernel kernel) { m_kernel.store(kernel, std::memory_order_relaxed); }
    Result operator()(Arguments... arguments) const { return Load()(arguments...); }

private:
    std::atomic<Kernel> m_kernel;
};

/// A kernel and the form it is compiled in. A family lists its `C` kernel first.
template <Form form, auto kernel>
struct KernelIn {
    static constexpr Form kForm = form;
    static constexpr auto kKernel = kernel;
};

/// The kernel of the form that `rule` gives for `level`, or the first one where there is no such
/// form.
template <class First, class... Others>
constexpr auto PickKernel(Form (*rule)(int level), int level) {
    [[maybe_unused]] const Form form = rule(level);
    auto kernel = First::kKernel;
    ((form == Others::kForm ? void(kernel = Others::kKernel) : void()), ...);
    return kernel;
}

template <auto& pointer, Form (*rule)(int level), class Signature, class... Kernels>
struct FirstCall;

template <auto& pointer, Form (*rule)(int level), class Result, class... Arguments,
          class... Kernels>
struct FirstCall<pointer, rule, Result(Arguments...), Kernels...> {
    static Result Run(Arguments... arguments) {
        const auto kernel = PickKernel<Kernels...>(rule, GetCpuInstructionSet());
        pointer.Store(kernel);
        return kernel(arguments...);
    }
};

/// The function that `pointer` starts at: it picks the kernel, stores it, and lets it do the work
/// of this call too.
template <auto& pointer, Form (*rule)(int level), class... Kernels>
constexpr auto& FirstCallOf =
    FirstCall<pointer, rule, typename std::decay_t<decltype(pointer)>::Signature, Kernels...>::Run;

#endif
