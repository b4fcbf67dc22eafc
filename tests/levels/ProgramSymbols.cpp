#include "levels/ProgramSymbols.h"

#include <cxxabi.h>
#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>

namespace {

std::string ReadProgram() {
    std::ifstream file("/proc/self/exe", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

template <class Record>
std::vector<Record> RecordsAt(const std::string& bytes, std::size_t offset, std::size_t count) {
    std::vector<Record> records(count);
    std::memcpy(records.data(), &bytes.at(offset), count * sizeof(Record));
    return records;
}

/// How far the program lies from the addresses in its file.
std::uintptr_t LoadAddress() {
    std::uintptr_t address = 0;
    dl_iterate_phdr(
        [](dl_phdr_info* program, std::size_t, void* found) {
            *static_cast<std::uintptr_t*>(found) = program->dlpi_addr;
            return 1;  // the program itself comes first
        },
        &address);
    return address;
}

/// The name that a symbol has in the sources. Compilers may take a variable or function apart, and
/// count the parts behind a dot.
std::string NameOf(std::string mangled) {
    mangled.erase(std::min(mangled.find('.'), mangled.size()));
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(mangled.c_str(), nullptr, nullptr, &status), std::free);
    return status == 0 ? name.get() : mangled;
}

/// Templates' names begin with the result.
std::string WithoutResult(const std::string& name) {
    const std::string result = "void ";
    return name.compare(0, result.size(), result) == 0 ? name.substr(result.size()) : name;
}

}  // namespace

ProgramSymbols::ProgramSymbols() {
    const std::string program = ReadProgram();
    const std::uintptr_t loadAddress = LoadAddress();
    const auto header = RecordsAt<ElfW(Ehdr)>(program, 0, 1).front();
    const auto sections = RecordsAt<ElfW(Shdr)>(program, header.e_shoff, header.e_shnum);
    for (const auto& section : sections) {
        if (section.sh_type != SHT_SYMTAB) {
            continue;
        }
        const char* const names = &program.at(sections.at(section.sh_link).sh_offset);
        const std::size_t count = section.sh_size / sizeof(ElfW(Sym));
        for (const auto& symbol : RecordsAt<ElfW(Sym)>(program, section.sh_offset, count)) {
            const auto type = symbol.st_info & 0xF;
            if (symbol.st_shndx == SHN_UNDEF || (type != STT_OBJECT && type != STT_FUNC)) {
                continue;
            }
            const std::string name = NameOf(names + symbol.st_name);
            const std::uintptr_t address = loadAddress + symbol.st_value;
            if (type == STT_OBJECT) {
                m_variables.emplace(name, address);
            } else {
                m_functions.emplace(address, WithoutResult(name));
            }
        }
    }
}

std::vector<std::string> ProgramSymbols::VariablesEndingWith(const std::string& ending) const {
    std::vector<std::string> names;
    for (const auto& [name, address] : m_variables) {
        if (name.size() >= ending.size() &&
            name.compare(name.size() - ending.size(), ending.size(), ending) == 0) {
            names.push_back(name);
        }
    }
    return names;
}

bool ProgramSymbols::LeadsTo(const std::string& variable, const std::string& function) const {
    const auto target = ValueOf<std::uintptr_t>(variable);
    const auto [first, last] = m_functions.equal_range(target);
    for (auto named = first; named != last; ++named) {
        if (named->second.compare(0, function.size(), function) == 0) {
            return true;
        }
    }
    return false;
}
