#ifndef KIVFISHEYE_TESTS_VECTOR_MATH_MODEL_H
#define KIVFISHEYE_TESTS_VECTOR_MATH_MODEL_H

#include <cstdint>
#include <vector>

#include "support/FloatBits.h"

// The lanes' trigonometry for one number at a time, in plain single precision and with branches.
// It shares no code with the library; the reciprocal is this processor's estimate.

namespace model {

float Sine(float x);
float Cosine(float x);
float Arctangent(float t);
float ArctangentOf(float y, float x);
float Arccosine(float c);

/// The processor's estimate of 1 / a.
float Reciprocal(float a);

/// To the nearest integer, ties to the even one; the smallest integer for NaN and what is too
/// large.
int Round(float a);

}  // namespace model

/// `count` floats from `first` to `last`, evenly spaced.
std::vector<float> Sweep(double first, double last, int count);

/// Every `step`-th float from 0 up to infinity, each with both signs.
std::vector<float> FloatsOfAllSizes(std::uint32_t step);

/// Zeros, ones, infinities, NaN, denormals and the largest floats of both signs, the bounds at
/// which the functions switch with the floats next to them, and quarter turns.
std::vector<float> UnusualFloats();

#endif
