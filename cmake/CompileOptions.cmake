# The flags every target of this project is compiled with; games that link the library see none of them.
add_library(kobaltrix_options INTERFACE)
target_compile_features(kobaltrix_options INTERFACE cxx_std_20)
if(MSVC) # never run; see docs/installing.md
  target_compile_options(kobaltrix_options INTERFACE /W4 /permissive- /utf-8 /Zc:__cplusplus)
  target_compile_definitions(kobaltrix_options INTERFACE NOMINMAX _CRT_SECURE_NO_WARNINGS _CRT_NONSTDC_NO_WARNINGS)
else()
  target_compile_options(
    kobaltrix_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
                                -Wnon-virtual-dtor -Wold-style-cast -Wformat=2)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns of its own std::string when it has inlined "text" + string.
  target_compile_options(kobaltrix_options INTERFACE -Wno-restrict)
endif()
if(KOBALTRIX_WERROR)
  target_compile_options(kobaltrix_options INTERFACE $<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()
if(KOBALTRIX_SANITIZE)
  set(sanitizers -fsanitize=address,undefined,float-cast-overflow,float-divide-by-zero
                 -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(kobaltrix_options INTERFACE ${sanitizers})
  # Tests are watched for what they do to memory; the rest would take a third of the time that compiling them takes.
  target_compile_options(kobaltrix_options INTERFACE $<$<BOOL:$<TARGET_PROPERTY:kobaltrix_is_test>>:-fno-sanitize=undefined,float-cast-overflow,float-divide-by-zero>)
  target_link_options(kobaltrix_options INTERFACE ${sanitizers})
  target_compile_definitions(kobaltrix_options INTERFACE KOBALTRIX_SANITIZE)
endif()
if(KOBALTRIX_SANITIZE_THREADS)
  target_compile_options(kobaltrix_options INTERFACE -fsanitize=thread)
  target_link_options(kobaltrix_options INTERFACE -fsanitize=thread)
endif()
if(KOBALTRIX_FUZZ)
  target_compile_options(kobaltrix_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(KOBALTRIX_CHECK_GL)
  target_compile_definitions(kobaltrix_options INTERFACE KOBALTRIX_CHECK_GL)
endif()
