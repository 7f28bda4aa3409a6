# The language, the warnings, the sanitizers and the compiler cache: the same for every target.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_package(Threads REQUIRED)

find_program(ZOLT_CCACHE ccache)
if(ZOLT_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ZOLT_CCACHE})
endif()

add_library(zolt_compiler INTERFACE)
target_compile_options(zolt_compiler INTERFACE -Wall -Wextra -Werror -Wshadow -Wnon-virtual-dtor)
target_include_directories(zolt_compiler INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_link_libraries(zolt_compiler INTERFACE Threads::Threads)
target_compile_definitions(zolt_compiler INTERFACE ZOLT_VERSION="${PROJECT_VERSION}")

if(ZOLT_SANITIZE)
  # Everywhere, third-party headers included, or the reports lie.
  add_compile_options(-fsanitize=${ZOLT_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ZOLT_SANITIZE})
endif()
