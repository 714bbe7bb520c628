# One target that carries every rule of the house: language, warnings, Qt's strictness.
add_library(quillon_rules INTERFACE)
target_compile_features(quillon_rules INTERFACE cxx_std_20)
set_property(TARGET quillon_rules PROPERTY INTERFACE_POSITION_INDEPENDENT_CODE ON)
target_compile_options(
    quillon_rules
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wsign-conversion
              -Wshadow
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              -Werror
              -fstack-protector-strong)
target_compile_definitions(
    quillon_rules
    INTERFACE QT_NO_CAST_FROM_ASCII
              QT_NO_CAST_TO_ASCII
              QT_NO_CAST_FROM_BYTEARRAY
              QT_NO_URL_CAST_FROM_STRING
              QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
              QT_NO_CONTEXTLESS_CONNECT
              QT_NO_FOREACH
              QT_NO_KEYWORDS
              QT_USE_QSTRINGBUILDER
              QT_STRICT_ITERATORS
              QT_DISABLE_DEPRECATED_BEFORE=0x060400)

set(QUILLON_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize=")
if(QUILLON_SANITIZE)
    add_compile_options(-fsanitize=${QUILLON_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QUILLON_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        # The checks that the sanitizers add make GCC doubt what is set in every case.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
endif()

if(QUILLON_TIDY)
    set(CMAKE_CXX_CLANG_TIDY clang-tidy --quiet --warnings-as-errors=*)
endif()

find_program(QUILLON_CCACHE ccache)
if(QUILLON_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${QUILLON_CCACHE})
endif()
