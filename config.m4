PHP_ARG_ENABLE([template],
  [whether to enable the template engine],
  [AS_HELP_STRING([--enable-template], [Enable the template engine])],
  [yes])

if test "$PHP_TEMPLATE" != "no"; then
  dnl Tested with PHP 8.2 to 8.6; what a later one changes can be seen by the suite only.
  AC_MSG_CHECKING([for PHP 8.2 or later])
  template_php=$($PHP_CONFIG --version)
  template_php_number=$($PHP_CONFIG --vernum)
  AC_MSG_RESULT([$template_php])
  if test "$template_php_number" -lt 80200; then
    AC_MSG_ERROR([this is PHP $template_php: template needs PHP 8.2 or later])
  elif test "$template_php_number" -ge 80700; then
    AC_MSG_WARN([PHP $template_php is newer than the last one that template was tested with, 8.6: run "make test"])
  fi

  PHP_REQUIRE_CXX()
  PHP_CXX_COMPILE_STDCXX([20], [mandatory], [PHP_TEMPLATE_STDCXX])
  PHP_ADD_LIBRARY([stdc++], [1], [TEMPLATE_SHARED_LIBADD])
  PHP_SUBST([TEMPLATE_SHARED_LIBADD])

  dnl The compiler joins the files, so that each room can have its own and no step pays for a call: a tenth of the time.
  AC_LANG_PUSH([C++])
  AC_MSG_CHECKING([for 64 bits])
  AC_COMPILE_IFELSE([AC_LANG_PROGRAM([], [static_assert(sizeof(void*) == 8 && sizeof(long) == 8, "");])],
    [AC_MSG_RESULT([yes])],
    [AC_MSG_RESULT([no])
     AC_MSG_ERROR([template needs a 64-bit system])])

  AC_MSG_CHECKING([for link-time optimisation])
  template_saved_flags=$CXXFLAGS
  CXXFLAGS="$CXXFLAGS -flto"
  AC_LINK_IFELSE([AC_LANG_PROGRAM([], [])], [template_lto=-flto], [template_lto=])
  CXXFLAGS=$template_saved_flags
  AC_MSG_RESULT([${template_lto:-no}])

  dnl Hardening that costs nothing while a page is rendered; what else a distribution wants comes by its own flags.
  template_hardening=
  for template_flag in -fcf-protection=full -mbranch-protection=standard; do
    AC_MSG_CHECKING([for $template_flag])
    CXXFLAGS="$template_saved_flags -Werror $template_flag"
    AC_COMPILE_IFELSE([AC_LANG_PROGRAM([], [])],
      [AC_MSG_RESULT([yes])
       template_hardening="$template_hardening $template_flag"],
      [AC_MSG_RESULT([no])])
  done
  CXXFLAGS=$template_saved_flags
  AC_MSG_CHECKING([for relocations that are settled and sealed at start])
  template_saved_flags=$LDFLAGS
  LDFLAGS="$LDFLAGS -Wl,-z,relro,-z,now"
  AC_LINK_IFELSE([AC_LANG_PROGRAM([], [])],
    [AC_MSG_RESULT([yes])
     TEMPLATE_SHARED_LIBADD="$TEMPLATE_SHARED_LIBADD -Wl,-z,relro,-z,now"],
    [AC_MSG_RESULT([no])])
  LDFLAGS=$template_saved_flags
  AC_LANG_POP([C++])
  if test -n "$template_lto"; then
    TEMPLATE_SHARED_LIBADD="$TEMPLATE_SHARED_LIBADD -Wc,$template_lto"
    dnl What is compiled while linking has a folder in its debug information, too; libtool would drop the flag there.
    for template_flag in $CXXFLAGS; do
      case $template_flag in
        -ffile-prefix-map=*|-fdebug-prefix-map=*) TEMPLATE_SHARED_LIBADD="$TEMPLATE_SHARED_LIBADD -Wc,$template_flag" ;;
      esac
    done
  fi

  template_flags="-DZEND_ENABLE_STATIC_TSRMLS_CACHE=1 $PHP_TEMPLATE_STDCXX $template_lto $template_hardening -I@ext_srcdir@/src -fvisibility=hidden -fvisibility-inlines-hidden -Wall -Wextra -Wformat -Werror=format-security"
  template_sources="src/call.cpp src/main.cpp src/template.cpp \
    src/php/plain_file.cpp src/php/properties.cpp src/php/stack_guard.cpp src/php/stream.cpp src/php/warning.cpp \
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
