# Warnings, sanitizers and the Qt settings that every target of this project shares.
add_library(zentorin_options INTERFACE)
target_compile_options(zentorin_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wconversion -Wno-sign-conversion -Werror)
target_compile_definitions(zentorin_options INTERFACE
  QT_NO_KEYWORDS
  QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_STRICT_ITERATORS)
target_include_directories(zentorin_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(ZENTORIN_SANITIZE)
  target_compile_options(zentorin_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(zentorin_options INTERFACE -fsanitize=address,undefined)
endif()
