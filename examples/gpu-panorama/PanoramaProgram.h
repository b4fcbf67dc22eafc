#ifndef GPU_PANORAMA_PANORAMA_PROGRAM_H
#define GPU_PANORAMA_PANORAMA_PROGRAM_H

#include <GL/gl.h>
#include <KivFisheyeTypes.h>

/// The two shaders that draw a grid, in use from when this is made until it goes. Attribute 0 is a
/// vertex's position and 1 its lens point. Throws `std::runtime_error` when OpenGL refuses them.
class PanoramaProgram {
public:
    explicit PanoramaProgram(const KivFisheyeLib::DewarpParams& lens);
    ~PanoramaProgram();
    PanoramaProgram(const PanoramaProgram&) = delete;
    PanoramaProgram& operator=(const PanoramaProgram&) = delete;

private:
    GLuint m_program;
};

#endif
