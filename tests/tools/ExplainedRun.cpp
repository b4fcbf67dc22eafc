#include "ExplainedRun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "GoodRun.h"
#include "HelpText.h"

ExplainedRun::ExplainedRun(const TemporaryFolder& folder, const std::vector<std::string>& words)
    : m_text(OutputOfGoodRun(folder, Joined(Joined({"dewarp"}, words), {"--explain"}))) {}

std::vector<std::string> ExplainedRun::LinesOn(const std::string& label) const {
    std::vector<std::string> found;
    for (const std::string& line : Lines(m_text)) {
        if (line.rfind(label + ": ", 0) == 0) {
            found.push_back(line.substr(label.size() + 2));
        }
    }
    return found;
}

bool ExplainedRun::Has(const std::string& label) const {
    return !LinesOn(label).empty();
}

std::string ExplainedRun::On(const std::string& label) const {
    const std::vector<std::string> found = LinesOn(label);
    EXPECT_EQ(found.size(), 1U) << label << " in " << m_text;
    return found.empty() ? "" : found[0];
}

double ExplainedRun::NumberOn(const std::string& label, std::size_t index) const {
    const std::string text = On(label);
    const char* digits = "0123456789";
    std::size_t place = text.find_first_of(digits);
    for (std::size_t i = 0; i < index && place != std::string::npos; ++i) {
        place = text.find_first_not_of("0123456789.", place);
        place = text.find_first_of(digits, place);
    }
    if (place == std::string::npos) {
        ADD_FAILURE() << "too few numbers: " << label << ": " << text;
        return std::nan("");
    }
    return std::strtod(text.c_str() + place, nullptr);
}

std::vector<std::string> ExplainedRun::Warnings() const {
    return LinesOn("warning");
}

std::vector<std::string> View(const std::string& mount, const std::string& view,
                              const std::vector<std::string>& more) {
    return Joined({"--mount", mount, "--view", view}, more);
}
