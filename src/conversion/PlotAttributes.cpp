#include "conversion/PlotAttributes.h"

#include "conversion/EuNumbers.h"
#include "core/files/ProfileFile.h"
#include "core/talk/ProfileSettings.h"
#include "core/text/Printf.h"
#include "core/text/Text.h"
#include "vocabulary/FieldRules.h"

#include <algorithm>
#include <charconv>
#include <functional>

namespace kavu {

namespace {

constexpr int kMostDivisions = 100;
constexpr int kMostPrecision = 20;
constexpr int kMostWidth = 8;
constexpr DrawingColour kAllColours = 0xFFFFFF;

constexpr auto kColours = std::to_array<PlotColourName>({
    {"Black", 0x000000},
    {"Dk Gray", 0x808080},
    {"Gray", 0xC0C0C0},
    {"Dk Red", 0x800000},
    {"Red", 0xFF0000},
    {"Dk Green", 0x008000},
    {"Green", 0x00FF00},
    {"Dk Blue", 0x000080},
    {"Blue", 0x0000FF},
    {"Dk Yellow", 0x808000},
    {"Yellow", 0xFFFF00},
    {"Dk Magenta", 0x800080},
    {"Magenta", 0xFF00FF},
    {"Turquoise", 0x00FFFF},
});
constexpr auto kScales = std::to_array<std::string_view>({
    "Use Min/Max Values",
    "Auto Scale X Axis",
    "Auto Scale Y Axis",
    "Auto Scale X And Y Axis",
});
constexpr auto kStyles =
    std::to_array<std::string_view>({"Solid", "Dash", "Dot", "Dash-Dot", "Dash-Dot-Dot", "None"});
constexpr auto kSymbols = std::to_array<std::string_view>(
    {"None", "Hollow Square", "Filled Square", "Hollow Triangle", "Filled Triangle",
     "Hollow Circle", "Filled Circle", "+ (Plus Symbol)", "X", "* (Asterisk)"});

std::string colourText(DrawingColour colour) {
    return formatPrintf("0x%6.6lX", static_cast<std::int64_t>(colour));
}

/// One walk over all keys, for reading and for writing, so that the keys are listed once.
class KeyWalk {
  public:
    virtual ~KeyWalk() = default;
    virtual void number(const std::string& key, int& value, int least, int most) = 0;
    virtual void real(const std::string& key, double& value) = 0;
    virtual void colour(const std::string& key, DrawingColour& value) = 0;

    void all(PlotAttributes& a) {
        choice("PLScale", a.scale, 0, 3);
        real("PLMinX", a.x.least);
        real("PLMaxX", a.x.most);
        real("PLMinY", a.y.least);
        real("PLMaxY", a.y.most);
        colour("PLBCol", a.borderColour);
        number("PLBWid", a.borderWidth, 1, kMostWidth);
        int blackAndWhite = a.blackAndWhite ? 1 : 0;
        number("PLBWOrCol", blackAndWhite, 0, 1);
        a.blackAndWhite = blackAndWhite != 0;
        number("PLXDiv", a.xDivisions, 0, kMostDivisions);
        number("PLYDiv", a.yDivisions, 0, kMostDivisions);
        number("PLXPrec", a.xPrecision, 0, kMostPrecision);
        number("PLYPrec", a.yPrecision, 0, kMostPrecision);
        for (std::size_t i = 0; i < a.series.size(); ++i) {
            const auto head = "PL" + std::to_string(i + 1);
            colour(head + "Col", a.series[i].colour);
            choice(head + "Sty", a.series[i].style, 0, static_cast<int>(kStyles.size()) - 1);
            number(head + "Wid", a.series[i].width, 1, kMostWidth);
            choice(head + "Sym", a.series[i].symbol, 1, static_cast<int>(kSymbols.size()));
        }
    }

  private:
    template <typename Enum>
    void choice(const std::string& key, Enum& value, int least, int most) {
        int held = static_cast<int>(value);
        number(key, held, least, most);
        value = static_cast<Enum>(held);
    }
};

class Reading : public KeyWalk {
  public:
    using Source = std::function<std::string(const std::string& key)>;
    explicit Reading(Source source) : source_(std::move(source)) {}

    void number(const std::string& key, int& value, int least, int most) override {
        if (const auto found = parseInteger(source_(key))) {
            value = static_cast<int>(std::clamp<long>(*found, least, most));
        }
    }
    void real(const std::string& key, double& value) override {
        if (const auto found = parseDouble(source_(key))) {
            value = *found;
        }
    }
    void colour(const std::string& key, DrawingColour& value) override {
        const auto text = source_(key);
        if (!startsWithIgnoreCase(text, "0x")) {
            return;
        }
        DrawingColour found = 0;
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data() + 2, end, found, 16);
        if (error == std::errc() && stop == end && found <= kAllColours) {
            value = found;
        }
    }

  private:
    Source source_;
};

class Writing : public KeyWalk {
  public:
    using Target = std::function<void(const std::string& key, const std::string& value)>;
    explicit Writing(Target target) : target_(std::move(target)) {}

    void number(const std::string& key, int& value, int, int) override {
        target_(key, std::to_string(value));
    }
    void real(const std::string& key, double& value) override { target_(key, exactText(value)); }
    void colour(const std::string& key, DrawingColour& value) override {
        target_(key, colourText(value));
    }

  private:
    Target target_;
};

}  // namespace

PlotAttributes::PlotAttributes() {
    series[1].colour = 0xFF0000;
    series[2].colour = 0x00FF00;
    series[3].colour = 0x0000FF;
}

void PlotAttributes::setRange(int method, double xLeast, double xMost, double yLeast,
                              double yMost) {
    if (method >= 0 && method < static_cast<int>(kScales.size())) {
        scale = static_cast<PlotScale>(method);
    }
    if (!scalesX(scale) && xLeast != xMost) {
        x = {std::min(xLeast, xMost), std::max(xLeast, xMost)};
    }
    if (!scalesY(scale) && yLeast != yMost) {
        y = {std::min(yLeast, yMost), std::max(yLeast, yMost)};
    }
}

void PlotAttributes::scaleTo(std::span<const double> xData, std::span<const double> yData) {
    const auto widen = [](PlotRange& range, std::span<const double> values) {
        range = {};
        for (const double value : values) {
            range.least = value < range.least ? value : range.least;
            range.most = value > range.most ? value : range.most;
        }
    };
    if (scalesX(scale)) {
        widen(x, xData);
    }
    if (scalesY(scale)) {
        widen(y, yData);
    }
}

void PlotAttributes::load(const ProfileFile& file, std::string_view section) {
    Reading([&](const std::string& key) { return file.value(section, key, ""); }).all(*this);
}

void PlotAttributes::load(const ProfileSettings& settings, std::string_view section) {
    Reading([&](const std::string& key) { return settings.profileText(section, key); }).all(*this);
}

void PlotAttributes::save(ProfileFile& file, std::string_view section) const {
    PlotAttributes copy = *this;
    Writing([&](const std::string& key, const std::string& value) {
        (void)file.setValue(section, key, value);
    }).all(copy);
}

void PlotAttributes::save(ProfileSettings& settings, std::string_view section) const {
    PlotAttributes copy = *this;
    Writing([&](const std::string& key, const std::string& value) {
        settings.writeProfile(section, key, value);
    }).all(copy);
}

// --- The dialog ---------------------------------------------------------------------------

std::span<const PlotColourName> plotColours() {
    return kColours;
}

std::string plotColourName(DrawingColour colour) {
    for (const auto& row : kColours) {
        if (row.colour == colour) {
            return std::string(row.name);
        }
    }
    return colourText(colour);
}

std::span<const std::string_view> plotScaleNames() {
    return kScales;
}

std::span<const std::string_view> lineStyleNames() {
    return kStyles;
}

std::span<const std::string_view> plotSymbolNames() {
    return kSymbols;
}

bool plotLimitsHold(const PlotAttributes& attributes) {
    return (scalesX(attributes.scale) || attributes.x.most > attributes.x.least) &&
           (scalesY(attributes.scale) || attributes.y.most > attributes.y.least);
}

bool styleFitsWidth(const SeriesAttributes& series) {
    return series.style == LineStyle::Solid || series.style == LineStyle::None || series.width == 1;
}

std::string styleConflictText(bool widthWasChanged) {
    return std::string(plottext::kSelection)
        .append(widthWasChanged ? plottext::kChangeStyle : plottext::kChangeWidth);
}

void settleStyleConflict(SeriesAttributes& series, bool widthWasChanged) {
    if (widthWasChanged) {
        series.style = LineStyle::Solid;
    } else {
        series.width = 1;
    }
}

std::vector<std::string> seriesTitles(int count, std::string_view names) {
    const auto lines = splitLines(names);
    std::vector<std::string> titles;
    const auto rows = static_cast<std::size_t>(std::clamp(count, 0, static_cast<int>(kPlotSeries)));
    for (std::size_t i = 0; i < rows; ++i) {
        titles.push_back(i < lines.size() && !lines[i].empty() ? lines[i] : std::to_string(i + 1));
    }
    return titles;
}

}  // namespace kavu
