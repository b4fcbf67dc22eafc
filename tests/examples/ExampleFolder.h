#ifndef KIVFISHEYE_TESTS_EXAMPLE_FOLDER_H
#define KIVFISHEYE_TESTS_EXAMPLE_FOLDER_H

#include <Picture.h>

#include <string>
#include <vector>

#include "support/ProgramRun.h"
#include "tools/TemporaryFolder.h"

std::string PathOfExample(const std::string& name);

/// Expects a failure of this status, told in one sentence of the program with these words, and no
/// other output.
void ExpectOneSentence(const std::string& name, const ProgramRun& run, int status,
                       const std::string& words);

/// A folder in which examples find their pictures.
class ExampleFolder : public TemporaryFolder {
public:
    explicit ExampleFolder(const Picture& fisheye);

    std::string Fisheye() const { return File("fisheye.png"); }

    /// Expects a run that does its work without a complaint, and gives what it printed.
    std::string OutputOf(const std::string& name, const std::vector<std::string>& arguments) const;
};

#endif
