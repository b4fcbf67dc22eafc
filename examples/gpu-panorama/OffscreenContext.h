#ifndef GPU_PANORAMA_OFFSCREEN_CONTEXT_H
#define GPU_PANORAMA_OFFSCREEN_CONTEXT_H

#include <EGL/egl.h>

/// OpenGL 3.3 without a window, current on the thread that made it: on the graphics card where
/// there is one, and on the processor where Mesa has no other. Throws `std::runtime_error` when it
/// cannot be had.
class OffscreenContext {
public:
    OffscreenContext();
    ~OffscreenContext();
    OffscreenContext(const OffscreenContext&) = delete;
    OffscreenContext& operator=(const OffscreenContext&) = delete;

private:
    EGLDisplay m_display = EGL_NO_DISPLAY;
    EGLContext m_context = EGL_NO_CONTEXT;
};

#endif
