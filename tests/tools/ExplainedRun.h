#ifndef KIVFISHEYE_TESTS_EXPLAINED_RUN_H
#define KIVFISHEYE_TESTS_EXPLAINED_RUN_H

#include <string>
#include <vector>

#include "TemporaryFolder.h"

/// What `dewarp --explain` tells of a view, taken apart. The first word is the input.
class ExplainedRun {
public:
    ExplainedRun(const TemporaryFolder& folder, const std::vector<std::string>& words);

    const std::string& Text() const { return m_text; }

    /// What stands behind the label and a colon, which must be there once.
    std::string On(const std::string& label) const;

    /// The n-th number in that text, counted from 0.
    double NumberOn(const std::string& label, std::size_t index = 0) const;

    bool Has(const std::string& label) const;

    std::vector<std::string> Warnings() const;

private:
    std::vector<std::string> LinesOn(const std::string& label) const;

    std::string m_text;
};

/// The options of a view.
std::vector<std::string> View(const std::string& mount, const std::string& view,
                              const std::vector<std::string>& more = {});

#endif
