#include "resources/pictograms/Pictogram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "resources/pictograms/Shapes.h"

namespace ovin {
namespace {

using namespace Shapes;

/// The drawings are made for squares of this side, and most of their lines are this wide.
constexpr double canvas = 24;
constexpr double stroke = 2;

using Drawing = double (*)(Spot);

double lines(Spot s, const std::vector<std::vector<Spot>>& all, double width = stroke) {
    double shape = canvas;
    for (const auto& one : all) shape = std::min(shape, line(s, one, width));
    return shape;
}

double frame(Spot s, Spot topLeft, Spot bottomRight, double radius) {
    return outline(box(s, topLeft, bottomRight, radius), stroke);
}

double ring(Spot s, Spot middle, double radius) { return outline(disc(s, middle, radius), stroke); }

double backup(Spot s) {
    const double turn = arc(s, {12, 12}, 8.5, 200, 500, stroke);
    return std::min(
        {turn, line(s, {{3.2, 4.5}, {3.7, 9.2}, {8.4, 8.8}}, stroke), line(s, {{12, 7.5}, {12, 12}, {15.2, 14}}, stroke)});
}

double battery(Spot s) {
    const double charge = box(s, {4.4, 9.4}, {14.6, 14.6}, 1);
    return std::min({frame(s, {2, 7}, {20, 17}, 3), charge, line(s, {{22.8, 10.8}, {22.8, 13.2}}, 1.8)});
}

double bell(Spot s) {
    const double dome = std::min(disc(s, {12, 9.5}, 6.4), box(s, {5.6, 9.5}, {18.4, 17}, 0));
    const double skirt = polygon(s, {{5.6, 13}, {3, 17.8}, {21, 17.8}, {18.4, 13}});
    return std::min({dome, skirt, disc(s, {12, 3}, 1.5), std::max(disc(s, {12, 19.2}, 2.7), 19.2 - s.y)});
}

double branch(Spot s) {
    const double stem = line(s, {{7, 8}, {7, 16}}, stroke);
    const double bough = arc(s, {11.5, 9}, 5.5, 0, 90, stroke);
    const double join = line(s, {{11.5, 14.5}, {7, 14.5}}, stroke);
    return std::min({stem, bough, join, ring(s, {7, 5.5}, 2.4), ring(s, {7, 18.5}, 2.4), ring(s, {17, 6.5}, 2.4)});
}

double calendar(Spot s) {
    const double head = std::max(box(s, {2.5, 3.8}, {21.5, 21.5}, 3.5), s.y - 9);
    const double days = std::min({disc(s, {8, 13}, 1.3), disc(s, {12, 13}, 1.3), disc(s, {16, 13}, 1.3),
                                  disc(s, {8, 17}, 1.3), disc(s, {12, 17}, 1.3)});
    return std::min(
        {frame(s, {3.5, 4.8}, {20.5, 20.5}, 2.5), head, days, lines(s, {{{8, 2.6}, {8, 5}}, {{16, 2.6}, {16, 5}}})});
}

double camera(Spot s) {
    const double body = std::min(box(s, {1.8, 6.2}, {22.2, 20}, 3), polygon(s, {{7, 7}, {9, 3.8}, {15, 3.8}, {17, 7}}));
    return std::min(without(body, disc(s, {12, 13}, 5)), disc(s, {12, 13}, 3.2));
}

double chat(Spot s) {
    const double bubble = std::min(box(s, {2, 3.5}, {22, 17.5}, 5), polygon(s, {{6, 15}, {6, 22}, {13, 17}}));
    return without(bubble, std::min({disc(s, {7.5, 10.5}, 1.4), disc(s, {12, 10.5}, 1.4), disc(s, {16.5, 10.5}, 1.4)}));
}

double clipboard(Spot s) {
    const double text = lines(s, {{{8, 11.5}, {16, 11.5}}, {{8, 16}, {13.5, 16}}}, 1.8);
    return std::min({frame(s, {4.5, 4.5}, {19.5, 21.5}, 2.5), box(s, {8, 2}, {16, 7}, 1.8), text});
}

double cloud(Spot s) {
    const double puffs = std::min({disc(s, {7, 14.4}, 5), disc(s, {11.6, 10.2}, 5.8), disc(s, {17.4, 14.6}, 4.8)});
    return std::min(puffs, box(s, {7, 13}, {17.4, 19.4}, 0));
}

double colours(Spot s) {
    const double drop = std::min(disc(s, {12, 14.5}, 7), polygon(s, {{12, 1.8}, {5.9, 11}, {18.1, 11}}));
    return without(drop, arc(s, {12, 14.5}, 4, 20, 100, 1.8));
}

double disk(Spot s) {
    const double lid = line(s, {{5.2, 5}, {2.6, 13}}, stroke);
    const double other = line(s, {{18.8, 5}, {21.4, 13}}, stroke);
    return std::min({lid, other, line(s, {{5.2, 5}, {18.8, 5}}, stroke), frame(s, {2.5, 12.5}, {21.5, 19.5}, 2),
                     disc(s, {17.3, 16}, 1.3)});
}

double fan(Spot s) {
    double blades = canvas;
    for (const double angle : {0.0, 120.0, 240.0}) {
        const Spot t = turned(s, {12, 12}, angle);
        blades = std::min(blades, std::max(disc(t, {12, 7}, 5), disc(t, {15.2, 6.4}, 5.6)));
    }
    return std::min(without(blades, disc(s, {12, 12}, 3.2)), disc(s, {12, 12}, 1.9));
}

double firewall(Spot s) {
    const double shield =
        polygon(s, {{12, 1.8}, {20.5, 5}, {20.2, 12}, {17.4, 17.8}, {12, 22.2}, {6.6, 17.8}, {3.8, 12}, {3.5, 5}});
    return without(shield, line(s, {{8, 12}, {11, 15}, {16.2, 8.8}}, stroke));
}

double focus(Spot s) { return without(disc(s, {11.4, 12.6}, 9.4), disc(s, {16.2, 7.4}, 8.2)); }

double globe(Spot s) {
    const double waist = outline(std::max(disc(s, {6.5, 12}, 10.2), disc(s, {17.5, 12}, 10.2)), 1.6);
    return std::min({ring(s, {12, 12}, 9.3), waist, line(s, {{3, 12}, {21, 12}}, 1.6)});
}

double headphones(Spot s) {
    const double band = std::min(arc(s, {12, 12.5}, 8.8, 180, 360, stroke),
                                 lines(s, {{{3.2, 12.5}, {3.2, 15}}, {{20.8, 12.5}, {20.8, 15}}}));
    return std::min({band, box(s, {2.2, 13.4}, {7.4, 21.6}, 2), box(s, {16.6, 13.4}, {21.8, 21.6}, 2)});
}

double keyboard(Spot s) {
    double keys = line(s, {{8.5, 15.6}, {15.5, 15.6}}, 1.8);
    for (const double x : {6.2, 10.0, 14.0, 17.8}) keys = std::min(keys, disc(s, {x, 10.2}, 1.25));
    return std::min(frame(s, {2, 6}, {22, 19}, 3), keys);
}

double layouts(Spot s) {
    return std::min({frame(s, {2.5, 4}, {21.5, 20}, 3), box(s, {5.2, 6.8}, {11, 17.2}, 1),
                     box(s, {13, 6.8}, {18.8, 11.2}, 1), box(s, {13, 13}, {18.8, 17.2}, 1)});
}

double lock(Spot s) {
    const double shackle =
        std::min(arc(s, {12, 8}, 4.3, 180, 360, 2.2), lines(s, {{{7.7, 8}, {7.7, 12}}, {{16.3, 8}, {16.3, 12}}}, 2.2));
    const double hole = std::min(disc(s, {12, 15.4}, 1.7), line(s, {{12, 15.4}, {12, 18}}, 1.5));
    return std::min(shackle, without(box(s, {4.2, 10.5}, {19.8, 22}, 2.6), hole));
}

double mail(Spot s) {
    return std::min(frame(s, {2.2, 5}, {21.8, 19.5}, 2.6), line(s, {{3.8, 7}, {12, 13.4}, {20.2, 7}}, stroke));
}

double microphone(Spot s) {
    const double stand =
        std::min(arc(s, {12, 11.2}, 7, 0, 180, stroke), lines(s, {{{12, 18.2}, {12, 21.6}}, {{8.4, 21.6}, {15.6, 21.6}}}));
    return std::min(box(s, {8.2, 1.6}, {15.8, 15}, 3.8), stand);
}

double music(Spot s) {
    const double stems = lines(s, {{{9, 18}, {9, 5}}, {{19.4, 16}, {19.4, 3}}});
    return std::min({stems, polygon(s, {{8, 4.2}, {20.4, 1.8}, {20.4, 6.6}, {8, 9}}), disc(s, {6.4, 18.2}, 3.6),
                     disc(s, {16.8, 16.2}, 3.6)});
}

double network(Spot s) {
    const Spot foot{12, 19.4};
    const double waves =
        std::min({arc(s, foot, 6.4, 225, 315, 2.4), arc(s, foot, 11, 225, 315, 2.4), arc(s, foot, 15.6, 226, 314, 2.4)});
    return std::min(waves, disc(s, {12, 19}, 2.1));
}

double night(Spot s) {
    double rays = canvas;
    for (int ray = 0; ray < 5; ++ray)
        rays = std::min(rays, line(turned(s, {12, 16}, 45.0 * ray), {{2, 16}, {4.6, 16}}, stroke));
    const double half = std::max(disc(s, {12, 16}, 5.2), s.y - 16);
    return std::min({rays, half, line(s, {{2, 20.6}, {22, 20.6}}, stroke)});
}

double notes(Spot s) {
    const double page = frame(s, {4, 3}, {20, 21}, 2.8);
    return std::min(page, lines(s, {{{8, 8}, {16, 8}}, {{8, 12}, {16, 12}}, {{8, 16}, {12.5, 16}}}, 1.8));
}

double printer(Spot s) {
    const double body = box(s, {2, 7.6}, {22, 17.6}, 2.4);
    const double gap = std::min(box(s, {6, 12.4}, {18, 24}, 0), disc(s, {18.6, 10.4}, 1.1));
    return std::min(
        {without(body, gap), frame(s, {7, 13.4}, {17, 21}, 1), std::max(frame(s, {7, 3}, {17, 10}, 1), s.y - 8)});
}

double radio(Spot s) {
    const Spot mast{12, 9.5};
    const double left = std::min(arc(s, mast, 5.2, 130, 230, stroke), arc(s, mast, 9.4, 130, 230, stroke));
    const double right = std::min(arc(s, mast, 5.2, -50, 50, stroke), arc(s, mast, 9.4, -50, 50, stroke));
    return std::min({left, right, disc(s, mast, 2.3), line(s, {{12, 9.5}, {12, 21.4}}, stroke)});
}

double recorder(Spot s) { return std::min(ring(s, {12, 12}, 9.2), disc(s, {12, 12}, 5)); }

double screen(Spot s) {
    const double arrow = line(s, {{9, 13.6}, {15, 7.4}, {10.6, 7.4}}, 1.8);
    const double rest = line(s, {{15, 7.4}, {15, 11.8}}, 1.8);
    return std::min({frame(s, {2.2, 3.4}, {21.8, 17}, 2.4), arrow, rest,
                     lines(s, {{{12, 17}, {12, 20.6}}, {{7.8, 20.8}, {16.2, 20.8}}})});
}

double screenshot(Spot s) {
    const double marks = lines(s, {{{3, 8}, {3, 4.8}, {4.8, 3}, {8, 3}},
                                   {{16, 3}, {19.2, 3}, {21, 4.8}, {21, 8}},
                                   {{21, 16}, {21, 19.2}, {19.2, 21}, {16, 21}},
                                   {{8, 21}, {4.8, 21}, {3, 19.2}, {3, 16}}});
    return std::min(marks, disc(s, {12, 12}, 4));
}

double stocks(Spot s) {
    return std::min(line(s, {{2.6, 17.4}, {8.6, 10.6}, {13, 14.6}, {21, 5.8}}, 2.2),
                    line(s, {{15.6, 5.6}, {21.2, 5.6}, {21.2, 11}}, 2.2));
}

double sun(Spot s) {
    double rays = canvas;
    for (int ray = 0; ray < 8; ++ray)
        rays = std::min(rays, line(turned(s, {12, 12}, 45.0 * ray), {{12, 1.8}, {12, 4}}, stroke));
    return std::min(disc(s, {12, 12}, 5), rays);
}

double tasks(Spot s) {
    return without(box(s, {2.6, 2.6}, {21.4, 21.4}, 5), line(s, {{7.2, 12.4}, {10.6, 15.8}, {16.8, 8.4}}, 2.4));
}

double timer(Spot s) {
    const double crown = lines(s, {{{9.4, 2}, {14.6, 2}}, {{18.6, 5.4}, {20, 6.8}}});
    return std::min({ring(s, {12, 13.4}, 8.2), crown, line(s, {{12, 13.4}, {12, 8.8}}, stroke), disc(s, {12, 13.4}, 1.5)});
}

double translator(Spot s) {
    const double letter = lines(s, {{{3, 20.4}, {8.4, 5.6}, {9.4, 5.6}, {14.8, 20.4}}, {{5, 15.6}, {12.8, 15.6}}}, 2.1);
    return std::min(letter,
                    lines(s, {{{14.2, 6}, {22, 6}}, {{18.1, 3.4}, {18.1, 6}}, {{20.6, 6}, {18.4, 11.6}, {16, 13.6}}}, 1.8));
}

double updates(Spot s) {
    const double turn = std::min(arc(s, {12, 12}, 8.4, 195, 330, stroke), arc(s, {12, 12}, 8.4, 15, 150, stroke));
    return std::min(
        {turn, line(s, {{19.8, 3}, {19.4, 8}, {14.6, 7.6}}, stroke), line(s, {{4.2, 21}, {4.6, 16}, {9.4, 16.4}}, stroke)});
}

double volume(Spot s) {
    const double cone = polygon(s, {{1.6, 8.8}, {6, 8.8}, {11.4, 4}, {11.4, 20}, {6, 15.2}, {1.6, 15.2}});
    const Spot mouth{10.6, 12};
    return std::min({cone, arc(s, mouth, 5, -42, 42, stroke), arc(s, mouth, 9.4, -44, 44, stroke)});
}

constexpr std::array drawings = std::to_array<std::pair<std::string_view, Drawing>>({
    {"backup", backup},
    {"battery", battery},
    {"bell", bell},
    {"branch", branch},
    {"calendar", calendar},
    {"camera", camera},
    {"chat", chat},
    {"clipboard", clipboard},
    {"cloud", cloud},
    {"colours", colours},
    {"disk", disk},
    {"fan", fan},
    {"firewall", firewall},
    {"focus", focus},
    {"globe", globe},
    {"headphones", headphones},
    {"keyboard", keyboard},
    {"layouts", layouts},
    {"lock", lock},
    {"mail", mail},
    {"microphone", microphone},
    {"music", music},
    {"network", network},
    {"night", night},
    {"notes", notes},
    {"printer", printer},
    {"radio", radio},
    {"recorder", recorder},
    {"screen", screen},
    {"screenshot", screenshot},
    {"stocks", stocks},
    {"sun", sun},
    {"tasks", tasks},
    {"timer", timer},
    {"translator", translator},
    {"updates", updates},
    {"volume", volume},
});

}  // namespace

std::optional<Pictogram> drawPictogram(std::string_view name, int side) {
    const auto* const found =
        std::find_if(drawings.begin(), drawings.end(), [&](const auto& one) { return one.first == name; });
    if (found == drawings.end() || side <= 0) return std::nullopt;
    Pictogram pictogram{side, {}};
    pictogram.coverage.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    const double pixel = canvas / side;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            const double distance = found->second({(column + 0.5) * pixel, (row + 0.5) * pixel});
            const double cover = std::clamp(0.5 - distance / pixel, 0.0, 1.0);  // smooth edges, one pixel wide
            pictogram.coverage.push_back(static_cast<std::uint8_t>(std::lround(255 * cover)));
        }
    }
    return pictogram;
}

std::vector<std::string_view> pictogramNames() {
    std::vector<std::string_view> names;
    for (const auto& [name, drawing] : drawings) names.push_back(name);
    return names;
}

}  // namespace ovin
