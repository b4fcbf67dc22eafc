#ifndef KIVFISHEYE_FUZZ_OUTCOMES_H
#define KIVFISHEYE_FUZZ_OUTCOMES_H

/// How often each operation came out how, to see what a corpus reaches. Counting costs time, so
/// nothing is counted before it is switched on.
void StartCountingOutcomes();
void CountOutcome(const char* operation, const char* outcome);

/// One line for each operation and outcome on standard output, in alphabetical order.
void PrintOutcomes();

#endif
