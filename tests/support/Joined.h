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

#endif
