#include <memory>
#include <optional>

#include "Arguments.h"
#include "Commands.h"
#include "Failure.h"
#include "JsonText.h"
#include "PanoramaMesh.h"

namespace KivFisheyeTools {

namespace {

constexpr std::uint32_t kMostVerticesOfASide = 4096;

struct MeshArguments {
    std::string output;
    ViewArguments view;
    std::uint32_t columns = 128;
    std::uint32_t rows = 32;
    std::optional<std::uint32_t> rowsSecond;
};

void CheckUsage(const MeshArguments& arguments) {
    CheckView(arguments.view, OutputKind::Picture);
    if (arguments.rowsSecond && !IsDualPanorama(arguments.view)) {
        throw UsageError("--rows-second goes with --view dual alone");
    }
}

/// Texture coordinates are floats around 0.5, where a tiny radius is lost.
bool LeavesExtent(float radius) {
    return 0.5F + radius > 0.5F;
}

/// Writes a grid whose first vertex has the number `first`; OBJ counts from 1.
void WriteObject(const MeshGrid& grid, std::uint32_t first, TextFile* file) {
    *file << "o " << grid.name << "\n";
    for (const Point& position : grid.positions) {
        *file << "v " << position.x << " " << position.y << " 0\n";
    }
    for (const Point& place : grid.texture) {
        *file << "vt " << place.x << " " << 1.0F - place.y << "\n";
    }
    const auto corner = [&](std::uint32_t row, std::uint32_t column) {
        const std::uint32_t number = first + row * grid.columns + column;
        *file << " " << number << "/" << number;
    };
    for (std::uint32_t row = 0; row + 1 < grid.rows; ++row) {
        for (std::uint32_t column = 0; column + 1 < grid.columns; ++column) {
            *file << "f";
            corner(row + 1, column);
            corner(row + 1, column + 1);
            corner(row, column + 1);
            corner(row, column);
            *file << "\n";
        }
    }
}

void WriteObj(const MeshArguments& arguments, const std::vector<MeshGrid>& grids) {
    TextFile file(arguments.output);
    file << "# The " << arguments.view.view << " panorama of a " << arguments.view.mount
         << " camera, as a flat rectangle in the plane z = 0.\n"
            "# Texture: the fisheye frame. With the radii of the lens 0 and 1 are the middles of "
            "its outermost pixels,\n"
            "# for u at its left and its right, for v at its bottom and its top.\n";
    std::uint32_t first = 1;
    for (const MeshGrid& grid : grids) {
        WriteObject(grid, first, &file);
        first += grid.columns * grid.rows;
    }
    file.Finish();
}

void WriteJson(const MeshArguments& arguments, const std::vector<MeshGrid>& grids) {
    TextFile file(arguments.output);
    file << "{\n";
    WriteView(arguments.view, &file);
    file << "  \"order\": \"row by row from the top left\",\n"
            "  \"positions\": \"x to the right and y up, in heights of the panorama from its "
            "bottom left\",\n"
            "  \"texture\": \"fractions of the frame's width and height, from its top left: with "
            "the radii of the lens 0 is the middle of the first pixel and 1 that of the last\",\n"
            "  \"grids\": [";
    const char* separator = "\n";
    for (const MeshGrid& grid : grids) {
        file << separator << R"(    {"name": ")" << grid.name << R"(", "columns": )" << grid.columns
             << ", \"rows\": " << grid.rows << ",\n     \"positions\": ";
        WritePoints(grid.positions, &file);
        file << ",\n     \"texture\": ";
        WritePoints(grid.texture, &file);
        file << "}";
        separator = ",\n";
    }
    file << "\n  ]\n}\n";
    file.Finish();
}

void MakeMesh(const MeshArguments& arguments) {
    CheckUsage(arguments);
    if (!LeavesExtent(arguments.view.lens.radiusX) || !LeavesExtent(arguments.view.lens.radiusY)) {
        throw Failure("the lens image is too small for a mesh");
    }
    const std::vector<MeshGrid> grids = PanoramaMesh(
        arguments.view,
        {arguments.columns, arguments.rows, arguments.rowsSecond.value_or(arguments.rows)});
    if (EndingOf(arguments.output) == ".obj") {
        WriteObj(arguments, grids);
    } else {
        WriteJson(arguments, grids);
    }
}

}  // namespace

void AddMeshCommand(CLI::App* app) {
    const auto arguments = std::make_shared<MeshArguments>();
    CLI::App* command = app->add_subcommand(
        "mesh", "Write the grid with which a graphics processor draws a panorama");
    command->option_defaults()->always_capture_default();
    AddOutput(command, &arguments->output, {".obj", ".json"},
              "The file to write: .obj is Wavefront OBJ, whose v runs up from the bottom of "
              "the frame, .json has it running down from the top. A dual panorama is two "
              "grids one above the other");
    AddMount(command, &arguments->view.mount)->required();
    command
        ->add_option("--view", arguments->view.view,
                     std::string("What the grid shows: ") + kPanoramasHelp)
        ->required()
        ->check(NameAmong("panorama", {"dual", "full"}))
        ->type_name("VIEW");
    const auto addCount = [command](const char* name, auto* count, const char* description) {
        return command->add_option(name, *count, description)
            ->transform(WholeNumberIn(2, kMostVerticesOfASide))
            ->type_name("COUNT");
    };
    addCount("--columns", &arguments->columns, "Vertices in a row");
    addCount("--rows", &arguments->rows, "Rows of vertices; of a dual panorama, of each half");
    addCount("--rows-second", &arguments->rowsSecond,
             "Rows of a dual panorama's lower half, where they are others");
    AddViewedLensOptions(command, &arguments->view);
    command->callback([arguments] { MakeMesh(*arguments); });
}

}  // namespace KivFisheyeTools
