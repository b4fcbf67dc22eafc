#define GL_GLEXT_PROTOTYPES
#include "PanoramaRenderer.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <cstdint>
#include <stdexcept>

#include "PanoramaProgram.h"

namespace {

/// OpenGL's names of things, given back when this goes.
class Names {
public:
    Names() {
        glGenVertexArrays(1, &grid);
        glGenBuffers(3, buffers);
        glGenTextures(2, textures);
        glGenFramebuffers(1, &framebuffer);
    }
    ~Names() {
        glDeleteFramebuffers(1, &framebuffer);
        glDeleteTextures(2, textures);
        glDeleteBuffers(3, buffers);
        glDeleteVertexArrays(1, &grid);
    }
    Names(const Names&) = delete;
    Names& operator=(const Names&) = delete;

    GLuint grid = 0;
    GLuint buffers[3] = {};
    GLuint textures[2] = {};
    GLuint framebuffer = 0;
};

template <class T>
void Fill(GLenum target, GLuint buffer, const std::vector<T>& values) {
    glBindBuffer(target, buffer);
    glBufferData(target, static_cast<GLsizeiptr>(values.size() * sizeof(T)), values.data(),
                 GL_STATIC_DRAW);
}

void UseMesh(const Names& names, const PanoramaMesh& mesh) {
    glBindVertexArray(names.grid);
    Fill(GL_ARRAY_BUFFER, names.buffers[0], mesh.positions);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    glEnableVertexAttribArray(0);
    Fill(GL_ARRAY_BUFFER, names.buffers[1], mesh.lensPoints);
    glVertexAttribPointer(1, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    glEnableVertexAttribArray(1);
    Fill(GL_ELEMENT_ARRAY_BUFFER, names.buffers[2], mesh.corners);
}

/// Picture rows run from the top, so a texture's second coordinate runs downward, as the mesh's
/// does.
void MakeTexture(GLuint texture, int width, int height, const unsigned char* pixels) {
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

/// What was drawn; OpenGL's rows run from the bottom.
Picture ReadBack(int width, int height) {
    Picture picture(static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
    for (int row = 0; row < height; ++row) {
        glReadPixels(0, height - 1 - row, width, 1, GL_RGBA, GL_UNSIGNED_BYTE,
                     picture.At(0, static_cast<std::uint32_t>(row)));
    }
    return picture;
}

}  // namespace

Picture RenderPanorama(const Picture& fisheye, const PanoramaView& view, int width, int height) {
    const PanoramaMesh mesh = MakePanoramaMesh(view, width, height);
    const Names names;

    MakeTexture(names.textures[0], width, height, nullptr);
    glBindFramebuffer(GL_FRAMEBUFFER, names.framebuffer);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, names.textures[0],
                           0);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) {
        throw std::runtime_error("OpenGL cannot draw a picture of this size");
    }
    MakeTexture(names.textures[1], static_cast<int>(fisheye.width),
                static_cast<int>(fisheye.height), fisheye.pixels.data());
    const PanoramaProgram program(view.lens);
    UseMesh(names, mesh);

    glViewport(0, 0, width, height);
    glClear(GL_COLOR_BUFFER_BIT);
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(mesh.corners.size()), GL_UNSIGNED_INT,
                   nullptr);
    Picture picture = ReadBack(width, height);
    if (glGetError() != GL_NO_ERROR) {
        throw std::runtime_error("OpenGL could not draw the panorama");
    }
    return picture;
}
