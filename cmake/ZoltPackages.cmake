# Every library from outside, and what to install when one is missing.
find_package(PkgConfig REQUIRED)

# zolt_need(<found-variable> <what> <debian> <fedora> <arch> <homebrew>)
function(zolt_need found what debian fedora arch homebrew)
  if(NOT ${found})
    message(FATAL_ERROR
      "${what} is missing. Install it with one of\n"
      "  apt install ${debian}\n  dnf install ${fedora}\n  pacman -S ${arch}\n  brew install ${homebrew}\n"
      "or let ./run and ./test install everything.")
  endif()
endfunction()

pkg_check_modules(utf8proc IMPORTED_TARGET libutf8proc)
zolt_need(utf8proc_FOUND "utf8proc" libutf8proc-dev utf8proc-devel libutf8proc utf8proc)

find_package(hwy CONFIG QUIET)
if(NOT TARGET hwy::hwy)
  pkg_check_modules(hwy IMPORTED_TARGET libhwy)
  if(TARGET PkgConfig::hwy)
    add_library(hwy::hwy ALIAS PkgConfig::hwy)
  endif()
endif()
zolt_need(hwy_FOUND "Highway" libhwy-dev highway-devel highway highway)

pkg_check_modules(re2 IMPORTED_TARGET re2)
zolt_need(re2_FOUND "RE2" libre2-dev re2-devel re2 re2)

pkg_check_modules(sodium IMPORTED_TARGET libsodium)
zolt_need(sodium_FOUND "libsodium" libsodium-dev libsodium-devel libsodium libsodium)

pkg_check_modules(zstd IMPORTED_TARGET libzstd)
zolt_need(zstd_FOUND "Zstandard" libzstd-dev libzstd-devel zstd zstd)

if(NOT ZOLT_EMULATION_ONLY)
  find_package(Qt6 6.4 QUIET COMPONENTS Core Gui Widgets Network DBus Test)
  zolt_need(Qt6_FOUND "Qt 6.4 or newer" qt6-base-dev qt6-qtbase-devel qt6-base qt)
  find_package(Qt6 6.4 QUIET COMPONENTS Svg)
  zolt_need(Qt6Svg_FOUND "Qt's SVG module" qt6-svg-dev qt6-qtsvg-devel qt6-svg qt)
  find_package(nlohmann_json 3.9 QUIET)
  zolt_need(nlohmann_json_FOUND "JSON for Modern C++" nlohmann-json3-dev json-devel nlohmann-json nlohmann-json)
endif()

# For what X11 desktops offer beyond Qt; left out without it.
if(NOT ZOLT_EMULATION_ONLY AND NOT APPLE)
  pkg_check_modules(x11_client IMPORTED_TARGET xcb)
  pkg_check_modules(x11_keyboard IMPORTED_TARGET xcb-xkb)
endif()

# Where Qt finds fonts by it, it is asked to begin before Qt does.
if(NOT ZOLT_EMULATION_ONLY AND NOT APPLE)
  pkg_check_modules(fontconfig IMPORTED_TARGET fontconfig)
endif()

if(ZOLT_TESTS)
  find_package(GTest QUIET)
  zolt_need(GTest_FOUND "GoogleTest" libgtest-dev gtest-devel gtest googletest)
endif()

# Only for the benchmark of key presses, which is left out without it: not every system has it.
if(ZOLT_BENCH)
  pkg_check_modules(xcb IMPORTED_TARGET xcb xcb-xtest)
endif()
