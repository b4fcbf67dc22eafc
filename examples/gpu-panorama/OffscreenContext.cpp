#include "OffscreenContext.h"

#include <EGL/eglext.h>

#include <cstring>
#include <stdexcept>

namespace {

bool HasClientExtension(const char* name) {
    const char* const extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    return extensions != nullptr && std::strstr(extensions, name) != nullptr;
}

/// One that needs no window system, where EGL has it.
EGLDisplay OpenDisplay() {
    if (HasClientExtension("EGL_MESA_platform_surfaceless")) {
        return eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
    }
    return eglGetDisplay(EGL_DEFAULT_DISPLAY);
}

EGLContext MakeContext(EGLDisplay display) {
    const EGLint configAttributes[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE,
                                       EGL_PBUFFER_BIT, EGL_NONE};
    const EGLint contextAttributes[] = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 3,
                                        EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglChooseConfig(display, configAttributes, &config, 1, &count) == EGL_FALSE || count == 0) {
        return EGL_NO_CONTEXT;
    }
    return eglCreateContext(display, config, EGL_NO_CONTEXT, contextAttributes);
}

}  // namespace

OffscreenContext::OffscreenContext() : m_display(OpenDisplay()) {
    if (eglInitialize(m_display, nullptr, nullptr) == EGL_FALSE) {
        throw std::runtime_error("EGL has no display");
    }
    if (eglBindAPI(EGL_OPENGL_API) == EGL_TRUE) {
        m_context = MakeContext(m_display);
    }
    // Pictures are drawn into a framebuffer object, so there is no surface.
    if (m_context == EGL_NO_CONTEXT ||
        eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, m_context) == EGL_FALSE) {
        eglTerminate(m_display);
        throw std::runtime_error("EGL has no OpenGL 3.3 that works without a window");
    }
}

OffscreenContext::~OffscreenContext() {
    eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(m_display, m_context);
    eglTerminate(m_display);
}
