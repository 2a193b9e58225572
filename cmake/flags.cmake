# Warnings and hardening of everything we compile; sanitizer builds leave out what gets in their way.

add_library(heron_flags INTERFACE)
target_compile_options(heron_flags INTERFACE
  -Wall -Wextra -Werror -Wformat=2 -Wconversion -Wsign-conversion -Wshadow -Wnull-dereference -Wimplicit-fallthrough
  -Werror=format-security -fno-strict-aliasing -fstack-protector-strong -fstack-clash-protection -fcf-protection=full)
# g++ 12 raises this one falsely where a text is joined to a temporary one.
target_compile_options(heron_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_link_options(heron_flags INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack,-z,separate-code)

if(HERON_SANITIZE)
  add_compile_options(-fsanitize=${HERON_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${HERON_SANITIZE})
  # Sanitized code trips this warning in the standard library's own headers.
  target_compile_options(heron_flags INTERFACE -Wno-null-dereference
                         $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
else()
  target_compile_options(heron_flags INTERFACE
    $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=3> -D_GLIBCXX_ASSERTIONS -ftrivial-auto-var-init=zero)
  target_link_options(heron_flags INTERFACE -Wl,-z,defs)
endif()
