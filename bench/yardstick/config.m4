PHP_ARG_ENABLE([yardstick], [for the benchmark's yardstick], [AS_HELP_STRING([--enable-yardstick], [Enable it])])
if test "$PHP_YARDSTICK" != "no"; then
  PHP_NEW_EXTENSION(yardstick, yardstick.c, $ext_shared)
fi
