# The warnings every target of ours is compiled with. Linked as a library, so that foreign targets stay untouched.
add_library(nimbry_warnings INTERFACE)
target_compile_options(nimbry_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  # The formulas are sums in a stated order: no fused multiply-add may change their last digit.
  -ffp-contract=off
  # g++ 12 takes plain string concatenations for overlapping copies (GCC bug 105651).
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(NIMBRY_WERROR)
  target_compile_options(nimbry_warnings INTERFACE -Werror)
endif()
if(NIMBRY_SANITIZE)
  # With the sanitizers' own code in between, g++ 12 no longer sees that a variant's member was made.
  target_compile_options(nimbry_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_compile_options(nimbry_warnings INTERFACE -fsanitize=${NIMBRY_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  target_link_options(nimbry_warnings INTERFACE -fsanitize=${NIMBRY_SANITIZE})
endif()
