// SPDX-License-Identifier: Apache-2.0
#include "support/FaultyDriver.h"

#include <QtCore/QtGlobal>

#include <dlfcn.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

using kvtest::driverFaults;

kvtest::DriverFaults& kvtest::driverFaults()
{
    static DriverFaults faults{.onlyES = qEnvironmentVariableIsSet("KV_ONLY_ES")};
    return faults;
}

namespace {

// Declared here because the headers of GLX and EGL include X11, whose macros disturb other headers.
using Function = void (*)();
using MakeCurrent = int(void*, unsigned long, void*);
using CreateNewContext = void*(void*, void*, int, void*, int);
using CreateContextAttribs = void*(void*, void*, void*, int, const int*);
using GetProcAddress = Function(const unsigned char*);
using QueryExtensions = const char*(void*, int);
using GetConfigAttrib = unsigned(void*, void*, int, int*);
using CreateEglContext = void*(void*, void*, void*, const int*);

constexpr int eglRenderableType = 0x3040;
constexpr int eglOpenGLBit = 0x0008;
constexpr int eglClientVersion = 0x3098;
constexpr int eglNone = 0x3038;
constexpr unsigned guiltyContextReset = 0x8253;
constexpr int glxResetStrategy = 0x8256;
constexpr int glxContextFlags = 0x2094;
constexpr int glxRobustAccess = 0x4;

template <typename Signature>
Signature* real(const char* name)
{
    return reinterpret_cast<Signature*>(dlsym(RTLD_NEXT, name));
}

unsigned resetStatus()
{
    return std::exchange(driverFaults().wasReset, false) ? guiltyContextReset : 0;
}

using CheckFramebuffer = unsigned(unsigned);
using GetInteger = void(unsigned, int*);

constexpr unsigned framebufferUnsupported = 0x8CDD;
constexpr unsigned maxRenderbufferSize = 0x84E8;

CreateContextAttribs* realCreateContextAttribs = nullptr;
CheckFramebuffer* realCheckFramebuffer = nullptr;
GetInteger* realGetInteger = nullptr;

unsigned checkFramebuffer(unsigned target)
{
    return driverFaults().refusesFramebuffers ? framebufferUnsupported : realCheckFramebuffer(target);
}

void getInteger(unsigned name, int* value)
{
    realGetInteger(name, value);
    if (name == maxRenderbufferSize && driverFaults().maxFramebufferSide > 0)
        *value = driverFaults().maxFramebufferSide;
}

/// Keeps the function that @p found points to in @p real and replaces it by @p fake.
template <typename Signature>
Function replaced(Function found, Signature*& real, Signature* fake)
{
    if (!found)
        return nullptr;
    real = reinterpret_cast<Signature*>(found);
    return reinterpret_cast<Function>(fake);
}

/// Mesa's software renderer cannot notify of resets: the request for it is removed.
void* createContextAttribs(void* display, void* config, void* share, int direct, const int* attributes)
{
    if (driverFaults().createsNoContext)
        return nullptr;
    std::vector<int> accepted;
    for (; *attributes; attributes += 2)
        if (*attributes == glxContextFlags)
            accepted.insert(accepted.end(), {glxContextFlags, attributes[1] & ~glxRobustAccess});
        else if (*attributes != glxResetStrategy)
            accepted.insert(accepted.end(), {attributes[0], attributes[1]});
    accepted.push_back(0);
    return realCreateContextAttribs(display, config, share, direct, accepted.data());
}

} // namespace

extern "C" {

/// Qt binds its plugins to their own libraries first (RTLD_DEEPBIND). Then they would not see this program's
/// functions.
Q_DECL_EXPORT void* dlopen(const char* file, int mode)
{
    return real<void*(const char*, int)>("dlopen")(file, mode & ~RTLD_DEEPBIND);
}

Q_DECL_EXPORT int glXMakeCurrent(void* display, unsigned long drawable, void* context)
{
    const bool isRefused = driverFaults().refusesCurrent || driverFaults().refusedWindow == drawable;
    if (context && isRefused) {
        ++driverFaults().currentAttempts;
        return 0;
    }
    return real<MakeCurrent>("glXMakeCurrent")(display, drawable, context);
}

Q_DECL_EXPORT void* glXCreateNewContext(void* display, void* config, int type, void* share, int direct)
{
    if (driverFaults().createsNoContext)
        return nullptr;
    return real<CreateNewContext>("glXCreateNewContext")(display, config, type, share, direct);
}

Q_DECL_EXPORT Function glXGetProcAddress(const unsigned char* name)
{
    const std::string_view text = reinterpret_cast<const char*>(name);
    const Function found = real<GetProcAddress>("glXGetProcAddress")(name);
    if (text == "glGetGraphicsResetStatusARB")
        return reinterpret_cast<Function>(&resetStatus);
    if (text == "glXCreateContextAttribsARB")
        return replaced(found, realCreateContextAttribs, &createContextAttribs);
    if (text == "glCheckFramebufferStatus")
        return replaced(found, realCheckFramebuffer, &checkFramebuffer);
    if (text == "glGetIntegerv")
        return replaced(found, realGetInteger, &getInteger);
    return found;
}

Q_DECL_EXPORT const char* glXQueryExtensionsString(void* display, int screen)
{
    static const std::string all =
        std::string(real<QueryExtensions>("glXQueryExtensionsString")(display, screen)) +
        " GLX_ARB_create_context_robustness";
    return all.c_str();
}

Q_DECL_EXPORT unsigned eglGetConfigAttrib(void* display, void* config, int attribute, int* value)
{
    const unsigned done = real<GetConfigAttrib>("eglGetConfigAttrib")(display, config, attribute, value);
    if (done && attribute == eglRenderableType && driverFaults().onlyES)
        *value &= ~eglOpenGLBit;
    return done;
}

Q_DECL_EXPORT void* eglCreateContext(void* display, void* config, void* share, const int* attributes)
{
    const int es2[] = {eglClientVersion, 2, eglNone};
    return real<CreateEglContext>("eglCreateContext")(display, config, share,
                                                      driverFaults().onlyES ? es2 : attributes);
}

} // extern "C"
