# The update framework of macOS: OVIN_SPARKLE is its folder. It is downloaded once, this version and no other, unless
# OVIN_SPARKLE names one that is here already, or OVIN_SPARKLE_ARCHIVE a file with the same content as the download.

set(OVIN_SPARKLE "" CACHE PATH "The folder Sparkle.framework, version 2; empty, it is downloaded")
if(NOT OVIN_SPARKLE)
    set(version 2.6.4)
    set(OVIN_SPARKLE_ARCHIVE
        https://github.com/sparkle-project/Sparkle/releases/download/${version}/Sparkle-for-Swift-Package-Manager.zip
        CACHE STRING "Address or path of the archive with the update framework")
    set(OVIN_SPARKLE_SHA256 eb3814726816ca2f09334ce562fff1b2cd0f7c16dd4e283256081f307accb9c4
        CACHE STRING "SHA-256 of that archive")
    include(FetchContent)
    FetchContent_Declare(sparkle URL ${OVIN_SPARKLE_ARCHIVE} URL_HASH SHA256=${OVIN_SPARKLE_SHA256})
    FetchContent_MakeAvailable(sparkle)
    # With or without the archive's outermost folder, which goes if it is the only one.
    file(GLOB frameworks ${sparkle_SOURCE_DIR}/Sparkle.xcframework/macos-*/Sparkle.framework
        ${sparkle_SOURCE_DIR}/macos-*/Sparkle.framework)
    list(LENGTH frameworks count)
    if(NOT count EQUAL 1)
        message(FATAL_ERROR "${OVIN_SPARKLE_ARCHIVE} holds ${count} frameworks for macOS instead of one.")
    endif()
    set(OVIN_SPARKLE ${frameworks})
endif()
# Programs outside of the bundle, tests that is, find it where it lies.
cmake_path(GET OVIN_SPARKLE PARENT_PATH CMAKE_BUILD_RPATH)
