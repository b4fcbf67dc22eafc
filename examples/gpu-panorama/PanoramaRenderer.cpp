#define GL_GLEXT_PROTOTYPES
#include "PanoramaRenderer.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <cstddef>
#include <stdexcept>
#include <string>

namespace {

// The lens ellipse is the client's to fit: a vertex's lens point becomes a place in the frame here.
constexpr char kVertexShader[] = R"(#version 330 core
layout(location = 0) in vec2 position;
layout(location = 1) in vec2 lensPoint;
uniform vec2 radius;
out vec2 framePoint;
void main() {
    framePoint = 0.5 + 2.0 * radius * lensPoint;
    gl_Position = vec4(position, 0.0, 1.0);
}
)";

constexpr char kFragmentShader[] = R"(#version 330 core
in vec2 framePoint;
uniform sampler2D fisheye;
out vec4 color;
void main() {
    color = texture(fisheye, framePoint);
}
)";

/// OpenGL's names of things, given back when this goes.
class Names {
public:
    Names() {
        glGenVertexArrays(1, &grid);
        glGenBuffers(3, buffers);
        glGenTextures(2, textures);
        glGenFramebuffers(1, &framebuffer);
        program = glCreateProgram();
    }
    ~Names() {
        glDeleteProgram(program);
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
    GLuint program = 0;
};

void AddShader(GLuint program, GLenum kind, const char* text) {
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    glAttachShader(program, shader);
    glDeleteShader(shader);
}

void UseProgram(GLuint program, const KivFisheyeLib::DewarpParams& lens) {
    AddShader(program, GL_VERTEX_SHADER, kVertexShader);
    AddShader(program, GL_FRAGMENT_SHADER, kFragmentShader);
    glLinkProgram(program);
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked != GL_TRUE) {
        throw std::runtime_error("OpenGL does not take the shaders");
    }
    glUseProgram(program);
    glUniform2f(glGetUniformLocation(program, "radius"), lens.radiusX, lens.radiusY);
}

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
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGB8, width, height, 0, GL_RGB, GL_UNSIGNED_BYTE, pixels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

/// What was drawn; OpenGL's rows run from the bottom.
Picture ReadBack(int width, int height) {
    const std::size_t rowBytes = std::size_t{3} * static_cast<std::size_t>(width);
    Picture picture{width, height,
                    std::vector<unsigned char>(rowBytes * static_cast<std::size_t>(height))};
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    for (int row = 0; row < height; ++row) {
        glReadPixels(0, height - 1 - row, width, 1, GL_RGB, GL_UNSIGNED_BYTE,
                     picture.pixels.data() + rowBytes * static_cast<std::size_t>(row));
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
    MakeTexture(names.textures[1], fisheye.width, fisheye.height, fisheye.pixels.data());
    UseProgram(names.program, view.lens);
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
