# Tests of a Windows build: the shell-driven ones start its programs through scripts that run them under wine.
foreach(target IN ITEMS VORANT_to_GIS make_parabolic_basin)
    file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/run_${target}
        CONTENT "#!/bin/sh\nexec ${CMAKE_CURRENT_LIST_DIR}/wine.sh $<TARGET_FILE:${target}> \"$@\"\n"
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
endforeach()
set(PROGRAM_TO_RUN ${CMAKE_CURRENT_BINARY_DIR}/run_VORANT_to_GIS)
set(MAKER_TO_RUN ${CMAKE_CURRENT_BINARY_DIR}/run_make_parabolic_basin)
set(LONGEST_TEST 3000)  # a program starts slowly there

# Holds a file for tests/windows/terminal.py.
enable_language(C)
add_executable(hold EXCLUDE_FROM_ALL windows/hold.c)
target_link_options(hold PRIVATE -static)

# The one header that the unit tests take from this machine, without those of its C library.
find_path(DOCTEST_OF_HOST doctest/doctest.h PATHS /usr/include /usr/local/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/headers)
file(CREATE_LINK ${DOCTEST_OF_HOST}/doctest ${CMAKE_CURRENT_BINARY_DIR}/headers/doctest SYMBOLIC)
set(DOCTEST_INCLUDE_DIR ${CMAKE_CURRENT_BINARY_DIR}/headers)
