# The project of the hosts: the test copies it into its work folder as
# CMakeLists.txt (a CMakeLists.txt here would be taken for a test folder).
# Hosts of the installed library, built as a user of the package builds them:
# the C, C++ and Fortran hosts through find_package(tmrdar), and the C host once
# more through pkg-config.
cmake_minimum_required(VERSION 3.24)
project(tmrdar_hosts LANGUAGES C CXX Fortran)

find_package(tmrdar 0.1 REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(TMRDAR REQUIRED IMPORTED_TARGET tmrdar)

# The installed headers must compile cleanly in strict hosts: tmrdar.h in C99,
# tmrdar.hpp in C++17.
set(strict -Wall -Wextra -Wpedantic -Werror)
add_executable(c_host host.c)
set_target_properties(c_host PROPERTIES C_STANDARD 99 C_EXTENSIONS OFF)
target_compile_options(c_host PRIVATE ${strict})
target_link_libraries(c_host PRIVATE tmrdar::tmrdar)

add_executable(c_host_pkgconfig host.c)
set_target_properties(c_host_pkgconfig PROPERTIES C_STANDARD 99 C_EXTENSIONS OFF)
target_compile_options(c_host_pkgconfig PRIVATE ${strict})
target_link_libraries(c_host_pkgconfig PRIVATE PkgConfig::TMRDAR)

add_executable(cxx_host host.cpp)
set_target_properties(cxx_host PROPERTIES CXX_STANDARD 17 CXX_EXTENSIONS OFF)
target_compile_options(cxx_host PRIVATE ${strict})
target_link_libraries(cxx_host PRIVATE tmrdar::tmrdar)

add_executable(fortran_host host.f90)
target_compile_options(fortran_host PRIVATE -std=f2008 -Wall -Werror)
target_link_libraries(fortran_host PRIVATE tmrdar::tmrdar)
