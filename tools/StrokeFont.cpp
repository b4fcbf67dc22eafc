#include "StrokeFont.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace KivFisheyeTools {

namespace {

constexpr double kAdvance = 6.0;
constexpr double kGlyphWidth = 4.0;
constexpr int kBaselineDigit = 2;
constexpr char kFirstCharacter = ' ';
constexpr char kLastCharacter = '~';
constexpr std::string_view kBox = "0206464202";

// The glyphs from space to tilde. A group of digit pairs is one stroke through lattice points, x
// then y; the baseline is y = 2.
constexpr std::array<std::string_view, kLastCharacter - kFirstCharacter + 1> kGlyphs = {
    "",                                     // space
    "2824 22",                              // !
    "1816 3836",                            // "
    "1218 3238 0646 0444",                  // #
    "45361605143443321203 2127",            // $
    "0248 07 43",                           // %
    "4206071828373603122244",               // &
    "2826",                                 // '
    "38272332",                             // (
    "18272312",                             // )
    "2327 0446 0644",                       // *
    "2327 0545",                            // +
    "222110",                               // ,
    "0545",                                 // -
    "22",                                   // .
    "0248",                                 // /
    "120307183847433212",                   // 0
    "162822 1232",                          // 1
    "07183847460242",                       // 2
    "07183847463515 354443321203",          // 3
    "32380444",                             // 4
    "480805354443321203",                   // 5
    "4738180703123243443505",               // 6
    "084822",                               // 7
    "150607183847463515 1504031232434435",  // 8
    "0312324347381807061545",               // 9
    "23 26",                                // :
    "26 222110",                            // ;
    "470543",                               // <
    "0646 0444",                            // =
    "074503",                               // >
    "07183847462524 22",                    // ?
    "321203071838474433362615142333",       // @
    "0206284642 0444",                      // A
    "02083847463505 3544433202",            // B
    "4738180703123243",                     // C
    "02083847433202",                       // D
    "48080242 0535",                        // E
    "480802 0535",                          // F
    "47381807031232434525",                 // G
    "0208 4248 0545",                       // H
    "1838 2228 1232",                       // I
    "4843321203",                           // J
    "0208 4804 2642",                       // K
    "080242",                               // L
    "0208254842",                           // M
    "02084248",                             // N
    "120307183847433212",                   // O
    "02083847463505",                       // P
    "120307183847433212 2442",              // Q
    "02083847463505 2542",                  // R
    "473818070615354443321203",             // S
    "0848 2228",                            // T
    "080312324348",                         // U
    "082248",                               // V
    "0802254248",                           // W
    "0248 0842",                            // X
    "082548 2522",                          // Y
    "08480242",                             // Z
    "38282232",                             // [
    "0842",                                 // backslash
    "18282212",                             // ]
    "062846",                               // ^
    "0141",                                 // _
    "1827",                                 // `
    "16364542 441403123243",                // a
    "0802 0516364543321203",                // b
    "4536160503123243",                     // c
    "4842 4536160503123243",                // d
    "04444536160503123243",                 // e
    "48382722 0636",                        // f
    "4641301001 4536160503123243",          // g
    "0802 0516364542",                      // h
    "162622 1232 28",                       // i
    "1636312010 38",                        // j
    "0802 4604 2542",                       // k
    "182822 1232",                          // l
    "0602 05162522 25364542",               // m
    "0602 0516364542",                      // n
    "160503123243453616",                   // o
    "0600 0516364543321203",                // p
    "4640 4536160503123243",                // q
    "0602 05163645",                        // r
    "45361605143443321203",                 // s
    "1813223243 0636",                      // t
    "0603123243 4642",                      // u
    "062246",                               // v
    "0612253246",                           // w
    "0246 0642",                            // x
    "0603123243 4641301001",                // y
    "06460242",                             // z
    "38272615242332",                       // {
    "2128",                                 // |
    "18272635242312",                       // }
    "05163445",                             // ~
};

std::string_view GlyphOf(char character) {
    if (character < kFirstCharacter || character > kLastCharacter) {
        return kBox;
    }
    return kGlyphs[static_cast<std::size_t>(character - kFirstCharacter)];
}

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace

StrokeText::StrokeText(std::string_view text) {
    double left = 0.0;
    for (const char byte : text) {
        if (!ContinuesCharacter(byte)) {
            AddGlyph(GlyphOf(byte), left);
            m_width = left + kGlyphWidth;
            left += kAdvance;
        }
    }
}

void StrokeText::AddGlyph(std::string_view strokes, double left) {
    bool startsStroke = true;
    double lastX = 0.0;
    double lastY = 0.0;
    for (std::size_t i = 0; i < strokes.size();) {
        if (strokes[i] == ' ') {
            startsStroke = true;
            ++i;
            continue;
        }
        const double x = left + (strokes[i] - '0');
        const double y = strokes[i + 1] - '0' - kBaselineDigit;
        const bool endsStroke = i + 2 == strokes.size() || strokes[i + 2] == ' ';
        if (!startsStroke) {
            m_segments.push_back({lastX, lastY, x, y});
        } else if (endsStroke) {
            m_segments.push_back({x, y, x, y});
        }
        startsStroke = false;
        lastX = x;
        lastY = y;
        i += 2;
    }
}

double StrokeText::DistanceTo(double x, double y) const {
    double nearest = std::numeric_limits<double>::infinity();
    for (const Segment& segment : m_segments) {
        const double alongX = segment.endX - segment.startX;
        const double alongY = segment.endY - segment.startY;
        const double length = alongX * alongX + alongY * alongY;
        const double projection = (x - segment.startX) * alongX + (y - segment.startY) * alongY;
        const double t = length > 0.0 ? std::clamp(projection / length, 0.0, 1.0) : 0.0;
        const double offsetX = x - segment.startX - t * alongX;
        const double offsetY = y - segment.startY - t * alongY;
        nearest = std::min(nearest, offsetX * offsetX + offsetY * offsetY);
    }
    return std::sqrt(nearest);
}

}  // namespace KivFisheyeTools
