#include "FlattenedByLibrary.h"

using KivFisheyeTools::Picture;

Picture FlattenedByLibrary(Picture input, const LibraryView& view, std::uint32_t width,
                           std::uint32_t height) {
    Picture output(width, height, 3);
    FlattenByLibrary(view, {input.width, input.height, input.stride, input.pixels.data()},
                     KivFisheyeLib::PixelFormatRGB24,
                     {width, height, output.stride, output.pixels.data()});
    return output;
}
