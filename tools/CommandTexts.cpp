#include "CommandTexts.h"

#include <map>

namespace KivFisheyeTools {

namespace {

const CommandText kProgramText = {
    {"Pictures and videos of every kind that FFmpeg's libraries read are flattened into panoramas "
     "and into the views of virtual cameras. A file appears under its name only when it is "
     "complete."},
    {{"The room to try it with, and its panorama", "kivfisheye scene room.png --mount ceiling"},
     {"What suits a picture", "kivfisheye info room.png"},
     {"A panorama of it",
      "kivfisheye dewarp room.png panorama.png --mount ceiling --view full --pan 90"},
     {"All about a command", "kivfisheye help dewarp"}}};

const CommandText kAimText = {
    {"The line printed is what --pan, --tilt and --zoom of the other commands take, in this order. "
     "They limit a view that would reach beyond the lens image. That is told here too, with the "
     "widest --fov that looks there, if any does: views near the rim need a small one."},
    {{"The angles of a view, 60 degrees high, of something at the right above the middle",
      "kivfisheye aim 0.7,0.3 --mount ceiling --fov 60"}}};

const CommandText kDewarpText = {
    {"Ctrl-C leaves a video of the frames so far. A damaged or cut-off input gives no output.",
     "With --explain nothing is written, and OUTPUT may be left out; the recommended size is then "
     "that of a picture. Its warnings tell of what may surprise."},
    {{"The full panorama of a ceiling camera, turned a quarter to the right",
      "kivfisheye dewarp room.png panorama.png --mount ceiling --view full --pan 90"},
     {"What a virtual camera sees in a corner",
      "kivfisheye dewarp room.png corner.png --mount ceiling --view vcam --pan 45 --tilt 50 --zoom "
      "4"},
     {"A whole video of a table camera",
      "kivfisheye dewarp yours.mkv flat.mp4 --mount table --view full"},
     {"What a dual panorama without the middle would show, in words",
      "kivfisheye dewarp room.png --explain --mount ceiling --view dual --inner-radius 0.3"}}};

const CommandText kHelpText = {{},
                               {{"How pictures are flattened", "kivfisheye help dewarp"},
                                {"The list of commands", "kivfisheye help"}}};

const CommandText kInfoText = {
    {"Without a file it tells the version and the instructions that the library uses."},
    {{"The recommended sizes of all views", "kivfisheye info room.png"},
     {"The same without the middle of the lens", "kivfisheye info room.png --inner-radius 0.3"},
     {"Version and instruction set", "kivfisheye info"}}};

const CommandText kMeshText = {
    {"With the usual radii the lens's circle fills the texture; with those of a frame, the texture "
     "is the frame. The grid is that of pan 0. A vertex exactly on a wall camera's axis, where its "
     "direction is not defined, is written as the centre of the lens.",
     "Places in the frame count from the middle of its first pixel to that of its last, and those "
     "of a texture from edge to edge: drawn as they are they lie up to half a pixel off. Radii of "
     "(n - 1) / n times the lens's, for a side of n pixels, make a grid for the texture's edges."},
    {{"The full panorama of a ceiling camera without the middle of the lens",
      "kivfisheye mesh room.obj --mount ceiling --view full --columns 128 --rows 32 --inner-radius "
      "0.2"}}};

const CommandText kOutlineText = {
    {"A ceiling or table panorama with an inner radius of 0 has no inner outline."},
    {{"A virtual camera's view, drawn on the picture",
      "kivfisheye outline room.png marked.png --mount ceiling --view vcam --pan 45 --tilt 50 "
      "--zoom "
      "4"},
     {"The outline of a wall panorama, to be laid over the picture",
      "kivfisheye outline hall.png marked.svg --mount wall --view full"}}};

const CommandText kSceneText = {
    {"The room has lines of equal bearing and elevation on its walls, so that a view tells where "
     "it "
     "looks."},
    {{"What a ceiling camera sees", "kivfisheye scene room.png --mount ceiling"},
     {"A wall camera's small picture", "kivfisheye scene hall.png --mount wall --size 512x512"}}};

const CommandText kSheetText = {
    {"A picture that does not fit into its cell is made smaller; none is enlarged."},
    {{"Two pictures side by side under their names",
      "kivfisheye sheet room.png hall.png --output sheet.png"},
     {"The same one above the other, small, with captions",
      "kivfisheye sheet room.png hall.png -o sheet.jpg --columns 1 --width 400 --quality 80 "
      "--captions Room,Hall"}}};

const CommandText kSnapshotText = {
    {},
    {{"The full panorama of a ceiling camera, turned a quarter to the right",
      "kivfisheye snapshot room.png still.png --mount ceiling --view full --pan 90"}}};

const CommandText kSweepText = {
    {"Views are numbered from the first to the last and are evenly far apart. Ctrl-C leaves the "
     "views so far."},
    {{"A video that looks around once",
      "kivfisheye sweep room.png around.mp4 --mount ceiling --from 0,45,3 --to 360,45,3 --frames "
      "100"},
     {"A folder with four pictures of a turning panorama",
      "kivfisheye sweep room.png turns --mount ceiling --view full --from 0 --to 270 --frames 4"}}};

}  // namespace

const CommandText& TextOf(const std::string& command) {
    static const std::map<std::string, CommandText> texts = {
        {"aim", kAimText},           {"dewarp", kDewarpText},      {"help", kHelpText},
        {"info", kInfoText},         {"kivfisheye", kProgramText}, {"mesh", kMeshText},
        {"outline", kOutlineText},   {"scene", kSceneText},        {"sheet", kSheetText},
        {"snapshot", kSnapshotText}, {"sweep", kSweepText}};
    return texts.at(command);
}

const std::vector<ExitStatus>& ExitStatuses() {
    static const std::vector<ExitStatus> statuses = {
        {"0", "The work is done."},
        {"1",
         "The work failed. No output was written; a sweep keeps the pictures before the one "
         "that failed."},
        {"2", "The command line is wrong, and nothing was done."},
        {"128+n",
         "Signal n ended the work. A video and a sweep keep what was done until then, when "
         "the signal is SIGINT, SIGTERM or SIGHUP."}};
    return statuses;
}

}  // namespace KivFisheyeTools
