#define GL_GLEXT_PROTOTYPES
#include "PanoramaProgram.h"

#include <GL/glext.h>

#include <stdexcept>

namespace {

// The lens ellipse is the client's to fit: a vertex's lens point becomes a place in the texture
// here. Radii are fractions of the way from the middle of the frame's first pixel to that of its
// last; a texture runs from edge to edge, which is a pixel more.
constexpr char kVertexShader[] = R"(#version 330 core
layout(location = 0) in vec2 position;
layout(location = 1) in vec2 lensPoint;
uniform vec2 radius;
uniform sampler2D fisheye;
out vec2 texturePoint;
void main() {
    vec2 size = vec2(textureSize(fisheye, 0));
    texturePoint = 0.5 + 2.0 * radius * lensPoint * (size - 1.0) / size;
    gl_Position = vec4(position, 0.0, 1.0);
}
)";

constexpr char kFragmentShader[] = R"(#version 330 core
in vec2 texturePoint;
uniform sampler2D fisheye;
out vec4 color;
void main() {
    color = texture(fisheye, texturePoint);
}
)";

void AddShader(GLuint program, GLenum kind, const char* text) {
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    glAttachShader(program, shader);
    glDeleteShader(shader);
}

}  // namespace

PanoramaProgram::PanoramaProgram(const KivFisheyeLib::DewarpParams& lens)
    : m_program(glCreateProgram()) {
    AddShader(m_program, GL_VERTEX_SHADER, kVertexShader);
    AddShader(m_program, GL_FRAGMENT_SHADER, kFragmentShader);
    glLinkProgram(m_program);
    GLint linked = GL_FALSE;
    glGetProgramiv(m_program, GL_LINK_STATUS, &linked);
    if (linked != GL_TRUE) {
        glDeleteProgram(m_program);
        throw std::runtime_error("OpenGL does not take the shaders");
    }
    glUseProgram(m_program);
    glUniform2f(glGetUniformLocation(m_program, "radius"), lens.radiusX, lens.radiusY);
}

PanoramaProgram::~PanoramaProgram() {
    glUseProgram(0);
    glDeleteProgram(m_program);
}
