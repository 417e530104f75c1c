// doctest itself and its main function; every other file of the tests only uses them.
#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>
