# SPDX-License-Identifier: Apache-2.0
# The environment in which all tests run. It is the same on every machine and for every user: language, theme,
# scaling, fonts, settings and folders of the person who runs the tests have no influence.

# Variables with which users, desktops and drivers change what programs do. Tests run without them.
set(KV_USER_VARIABLES
    # language and formats
    LANG LANGUAGE LC_ADDRESS LC_COLLATE LC_CTYPE LC_IDENTIFICATION LC_MEASUREMENT LC_MESSAGES LC_MONETARY
    LC_NAME LC_NUMERIC LC_PAPER LC_TELEPHONE LC_TIME LOCPATH NLSPATH
    # desktop and session
    DESKTOP_SESSION XDG_CURRENT_DESKTOP XDG_SESSION_CLASS XDG_SESSION_DESKTOP XDG_SESSION_ID XDG_SESSION_TYPE
    XDG_DATA_DIRS XDG_CONFIG_DIRS XDG_STATE_HOME SESSION_MANAGER GNOME_DESKTOP_SESSION_ID KDE_FULL_SESSION
    KDE_SESSION_VERSION KDE_SESSION_UID KDEDIRS KDEHOME XCURSOR_THEME XCURSOR_SIZE
    GTK_THEME GTK_MODULES GTK_PATH GTK_DATA_PREFIX GTK_EXE_PREFIX GTK_IM_MODULE GTK_USE_PORTAL GTK_RC_FILES
    GTK2_RC_FILES GTK_CSD GDK_BACKEND GDK_SCALE GDK_DPI_SCALE
    # input methods
    XMODIFIERS QT_IM_MODULE QT_IM_MODULES
    # look and scaling of Qt
    QT_QPA_PLATFORMTHEME QT_STYLE_OVERRIDE QT_SCALE_FACTOR QT_SCALE_FACTOR_ROUNDING_POLICY
    QT_SCREEN_SCALE_FACTORS QT_AUTO_SCREEN_SCALE_FACTOR QT_ENABLE_HIGHDPI_SCALING QT_DEVICE_PIXEL_RATIO
    QT_FONT_DPI QT_USE_PHYSICAL_DPI QT_DPI_ADJUSTMENT_POLICY QT_QPA_FONTDIR QT_QPA_ENABLE_TERMINAL_KEYBOARD
    QT_QPA_GENERIC_PLUGINS QT_QPA_PLATFORM_PLUGIN_PATH QT_PLUGIN_PATH QT_ACCESSIBILITY
    QT_LINUX_ACCESSIBILITY_ALWAYS_ON QT_WAYLAND_SHELL_INTEGRATION QT_WAYLAND_DISABLE_WINDOWDECORATION
    # messages of Qt
    QT_LOGGING_RULES QT_LOGGING_CONF QT_LOGGING_TO_CONSOLE QT_ASSUME_STDERR_HAS_CONSOLE QT_FORCE_STDERR_LOGGING
    QT_MESSAGE_PATTERN QT_DEBUG_PLUGINS QT_FATAL_WARNINGS QT_FATAL_CRITICALS
    # OpenGL
    QT_OPENGL QT_OPENGL_BUGLIST QT_XCB_GL_INTEGRATION QT_XCB_NATIVE_PAINTING QT_XCB_NO_XI2 QSG_RHI_BACKEND
    LIBGL_ALWAYS_INDIRECT LIBGL_DEBUG LIBGL_DRIVERS_PATH MESA_DEBUG MESA_EXTENSION_OVERRIDE
    MESA_GL_VERSION_OVERRIDE MESA_GLSL_VERSION_OVERRIDE MESA_LOADER_DRIVER_OVERRIDE GALLIUM_HUD DRI_PRIME vblank_mode __GLX_VENDOR_LIBRARY_NAME __EGL_VENDOR_LIBRARY_FILENAMES)

# The display and the renderer that programs use. A test that is started by hand keeps these.
set(KV_DISPLAY_VARIABLES DISPLAY WAYLAND_DISPLAY XAUTHORITY QT_QPA_PLATFORM LIBGL_ALWAYS_SOFTWARE GALLIUM_DRIVER)

set(kv_test_folder "${CMAKE_BINARY_DIR}/cache")
foreach(folder IN ITEMS mesa config config-dirs data home runtime fontconfig)
    file(MAKE_DIRECTORY "${kv_test_folder}/${folder}")
endforeach()
file(CHMOD "${kv_test_folder}/runtime" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# Only one font family, which also replaces all other families that programs request.
file(GLOB kv_font_folders /usr/share/fonts/truetype/liberation /usr/share/fonts/liberation*)
set(KV_FONT_FOLDERS "")
foreach(folder IN LISTS kv_font_folders)
    string(APPEND KV_FONT_FOLDERS "<dir>${folder}</dir>")
endforeach()
configure_file("${CMAKE_CURRENT_LIST_DIR}/fonts.conf.in" "${kv_test_folder}/fonts.conf" @ONLY)

# kv_set_test_environment(TEST [NAME=value ...]): the environment of all tests, changed by the given variables.
function(kv_set_test_environment test)
    set(changes)
    foreach(variable IN LISTS KV_USER_VARIABLES KV_DISPLAY_VARIABLES)
        list(APPEND changes "${variable}=unset:")
    endforeach()
    set(environment
        KV_TEST_ENVIRONMENT=1
        LC_ALL=C.UTF-8
        TZ=UTC
        HOME=${kv_test_folder}/home
        XDG_CACHE_HOME=${kv_test_folder}
        XDG_CONFIG_HOME=${kv_test_folder}/config
        XDG_CONFIG_DIRS=${kv_test_folder}/config-dirs
        XDG_DATA_HOME=${kv_test_folder}/data
        XDG_RUNTIME_DIR=${kv_test_folder}/runtime
        DBUS_SESSION_BUS_ADDRESS=disabled:
        MESA_SHADER_CACHE_DIR=${kv_test_folder}/mesa
        ${ARGN})
    if(KV_FONT_FOLDERS)
        list(APPEND environment FONTCONFIG_FILE=${kv_test_folder}/fonts.conf)
    endif()
    foreach(variable IN LISTS environment)
        # the whole value, since "^" may match again behind each replacement
        string(REGEX REPLACE "^([^=]+)=(.*)$" "\\1=set:\\2" change "${variable}")
        list(APPEND changes "${change}")
    endforeach()
    set_tests_properties(${test} PROPERTIES ENVIRONMENT_MODIFICATION "${changes}")
endfunction()
