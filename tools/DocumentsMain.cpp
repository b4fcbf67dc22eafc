#include <exception>
#include <filesystem>
#include <iostream>

#include "BashCompletion.h"
#include "CommandLine.h"
#include "ManualPages.h"
#include "TextFile.h"

namespace KivFisheyeTools {

namespace {

void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::filesystem::create_directories(path.parent_path());
    TextFile file(path.string());
    file << text;
    file.Finish();
}

void WriteDocuments(const std::filesystem::path& manual, const std::filesystem::path& completion) {
    const CommandLine program;
    for (const CLI::App* command : CommandsOf(program)) {
        WriteFile(manual / (PageName(program, *command) + ".1"), CommandPage(program, *command));
    }
    WriteFile(manual / (program.get_name() + ".1"), ProgramPage(program));
    WriteFile(completion, BashCompletion(program));
}

}  // namespace

}  // namespace KivFisheyeTools

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "Usage: KivFisheyeDocuments MANUAL_FOLDER COMPLETION_FILE\n";
        return 2;
    }
    try {
        KivFisheyeTools::WriteDocuments(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "KivFisheyeDocuments: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
