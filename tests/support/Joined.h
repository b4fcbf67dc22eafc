#ifndef KIVFISHEYE_TESTS_JOINED_H
#define KIVFISHEYE_TESTS_JOINED_H

#include <gtest/gtest.h>

/// The types of two lists in one.
template <class First, class Second>
struct Joined;

template <class... First, class... Second>
struct Joined<testing::Types<First...>, testing::Types<Second...>> {
    using Types = testing::Types<First..., Second...>;
};

/// The types of a list, each in a template.
template <template <class> class Wrap, class List>
struct Mapped;

template <template <class> class Wrap, class... Each>
struct Mapped<Wrap, testing::Types<Each...>> {
    using Types = testing::Types<Wrap<Each>...>;
};

#endif
