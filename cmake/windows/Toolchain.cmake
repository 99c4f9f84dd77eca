# A Windows check of the whole tree without a Windows build of Qt: the project is configured
# for Windows with Debian's MinGW-w64 compiler (the "-posix" one, whose standard library has
# std::thread and std::mutex) against the host's Qt 5 headers. SyntaxOnly.cmake then turns
# every compile into -fsyntax-only and every link into nothing, so that
#     cmake -S . -B build/win -DCMAKE_TOOLCHAIN_FILE=cmake/windows/Toolchain.cmake -DOVCORE_BUILD_TESTS=OFF
#     cmake --build build/win
# compiles each source the build knows, with the moc output, as a Windows build would.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_PROJECT_OVCore_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/SyntaxOnly.cmake)
# The host's Qt 5 (Debian's multiarch folder, which a Windows target does not search).
set(Qt5_DIR /usr/lib/x86_64-linux-gnu/cmake/Qt5 CACHE PATH "The host's Qt 5 package")
