#ifndef KIVFISHEYE_TESTS_PROGRAM_SYMBOLS_H
#define KIVFISHEYE_TESTS_PROGRAM_SYMBOLS_H

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

/// The functions and variables of this program, those of unnamed namespaces and private classes
/// too, by the names that they have in the sources. The program must not be stripped.
class ProgramSymbols {
public:
    ProgramSymbols();

    /// The names of variables that end so.
    std::vector<std::string> VariablesEndingWith(const std::string& ending) const;
    /// What the variable of this name holds now.
    template <class Value>
    Value ValueOf(const std::string& variable) const {
        Value value{};
        std::memcpy(&value, reinterpret_cast<const void*>(m_variables.at(variable)), sizeof value);
        return value;
    }
    /// The variable of this name, which is a pointer to a function, holds a function whose name,
    /// without its result, starts so.
    bool LeadsTo(const std::string& variable, const std::string& function) const;

private:
    std::map<std::string, std::uintptr_t> m_variables;
    std::multimap<std::uintptr_t, std::string> m_functions;
};

#endif
