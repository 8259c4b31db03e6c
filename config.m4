PHP_ARG_ENABLE([template],
  [whether to enable the template engine],
  [AS_HELP_STRING([--enable-template], [Enable the template engine])],
  [yes])

if test "$PHP_TEMPLATE" != "no"; then
  AC_MSG_CHECKING([for PHP 8.2 without thread safety])
  template_api=$($PHP_CONFIG --phpapi)
  if test "$template_api" != "20220829"; then
    AC_MSG_ERROR([this PHP has module API $template_api: install php8.2-dev and use its phpize])
  fi
  if test "$PHP_THREAD_SAFETY" = "yes"; then
    AC_MSG_ERROR([this PHP is thread-safe: install a PHP 8.2 built without thread safety])
  fi
  AC_MSG_RESULT([yes])

  PHP_REQUIRE_CXX()
  PHP_CXX_COMPILE_STDCXX([20], [mandatory], [PHP_TEMPLATE_STDCXX])
  PHP_ADD_LIBRARY([stdc++], [1], [TEMPLATE_SHARED_LIBADD])
  PHP_SUBST([TEMPLATE_SHARED_LIBADD])

  dnl The compiler joins the files, so that each room can have its own and no step pays for a call: a tenth of the time.
  AC_LANG_PUSH([C++])
  AC_MSG_CHECKING([for link-time optimisation])
  template_saved_flags=$CXXFLAGS
  CXXFLAGS="$CXXFLAGS -flto"
  AC_LINK_IFELSE([AC_LANG_PROGRAM([], [])], [template_lto=-flto], [template_lto=])
  CXXFLAGS=$template_saved_flags
  AC_MSG_RESULT([${template_lto:-no}])
  AC_LANG_POP([C++])
  if test -n "$template_lto"; then
    TEMPLATE_SHARED_LIBADD="$TEMPLATE_SHARED_LIBADD -Wc,$template_lto"
  fi

  template_flags="$PHP_TEMPLATE_STDCXX $template_lto -I@ext_srcdir@/src -fvisibility=hidden -fvisibility-inlines-hidden -Wall -Wextra -Wformat -Werror=format-security"
  template_sources="src/call.cpp src/main.cpp \
    src/php/plain_file.cpp src/php/stack_guard.cpp src/php/warning.cpp \
    src/text/arena.cpp src/text/byte_scan.cpp src/text/number_text.cpp src/text/text_buffer.cpp \
    src/tree/compared_value.cpp src/tree/reference.cpp \
    src/source/input.cpp \
    src/data/escape.cpp src/data/php_interface.cpp src/data/value_text.cpp \
    src/analysis/driver.cpp src/analysis/structure.cpp src/analysis/variables.cpp \
    src/rendering/render.cpp"
  PHP_NEW_EXTENSION([template], [$template_sources], [$ext_shared], [], [$template_flags], [cxx])
  for template_room in php text tree source data analysis rendering; do
    PHP_ADD_BUILD_DIR([$ext_builddir/src/$template_room])
  done
fi
