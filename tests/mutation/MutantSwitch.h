// Which of the mutants that are compiled into the program is the one to run: the number that the
// environment variable KIVFISHEYE_MUTANT names, and none without it. Every file gets this header on
// the compiler's command line, and those with mutants declare the variable. Nothing but macros may
// stand before a precompiled header. Constant expressions keep what the source says.
#define KivFisheyeMutant(number) \
    (!__builtin_is_constant_evaluated() && kivFisheyeMutant == (number))
