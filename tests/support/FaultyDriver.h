// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace kvtest {

/// Faults of the OpenGL driver. The functions of GLX and EGL that Qt's plugins call are defined in the test
/// program, which must export them (ENABLE_EXPORTS), and call the real ones.
struct DriverFaults
{
    bool refusesCurrent = false;     ///< no context can be made current
    unsigned long refusedWindow = 0; ///< X11 window in which no context can be made current
    int currentAttempts = 0;         ///< how often that was tried
    bool createsNoContext = false;
    /// The graphics processor was reset: the current context is lost. Reported once, to contexts that asked
    /// for notifications of resets.
    bool wasReset = false;
    bool refusesFramebuffers = false; ///< every framebuffer object is incomplete
    int maxFramebufferSide = 0;       ///< if above 0: in contexts that are made from now on
    bool onlyES = false; ///< EGL has OpenGL ES 2.0 instead of OpenGL; true at first if KV_ONLY_ES is set
};

DriverFaults& driverFaults();

} // namespace kvtest
