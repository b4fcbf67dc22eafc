#ifndef KIVFISHEYE_PIXEL_H
#define KIVFISHEYE_PIXEL_H

#include <cstring>

/// A pixel of 24 or 32 bits: opaque bytes in a frame that may stand at any address. No byte outside
/// the pixel is read or written.
template <unsigned long bitsPerPixel>
struct PixelT {
    static_assert(bitsPerPixel == 24 || bitsPerPixel == 32);
    static constexpr int kBytes = static_cast<int>(bitsPerPixel / 8);
    static constexpr bool kSpills = false;

    static void Copy(const unsigned char* src, unsigned char* dst) {
        std::memcpy(dst, src, kBytes);
    }
    static void Clear(unsigned char* dst) { std::memset(dst, 0, kBytes); }
};

/// A pixel of 24 bits that takes the byte after it along: one access in place of two. For a source
/// that has this byte, and an output whose next pixel is written afterwards.
struct SpillingPixel24 {
    static constexpr int kBytes = 3;
    static constexpr bool kSpills = true;

    static void Copy(const unsigned char* src, unsigned char* dst) { std::memcpy(dst, src, 4); }
    static void Clear(unsigned char* dst) { std::memset(dst, 0, 4); }
};

#endif
