#include "graph/curves.h"

#include "channels/channels.h"
#include "channels/derived.h"
#include "channels/sample_place.h"
#include "core/data_types.h"
#include "platform/draw/wide_registers.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace kvo::graph {

using namespace channels;
namespace {

using core::AppConfig;
using core::RunSample;
using platform::Point;

constexpr int rpmWindow = 5;   // samples of a running average of rpm and speed
constexpr int byteWindow = 10; // and of analogs and exhausts

// A run and how it lies on the surface, as each channel's routine needs it.
struct CurveSource {
    const core::RunImage* image;        // rows, analog types, tyre setup
    const core::RunHeader* drive;       // primary drive of slip and ratio
    const core::RunHeader* clutchDrive; // primary drive of the clutch channel
    int sampleCount;                    // rows gone through
    int step;                           // samples a point
    bool timeSharedExhausts;
    int shiftX; // added to the sample number
};

// How the values of a channel become heights: v / divisor * factor + raise in doubles. Dividing or
// multiplying by 1 changes no number, so that one formula serves all channels.
class HeightRule {
public:
    HeightRule(const AppConfig& config, int channel, int rpmScale, double mphScale)
        : m_raise(config.ComboScale[static_cast<std::size_t>(channel)]) {
        switch (channelFacts(channel).kind) {
        case ChannelKind::engine:
        case ChannelKind::clutch:
        case ChannelKind::input:
        case ChannelKind::output:
            m_divisor = rpmScale;
            break;
        case ChannelKind::mph:
            m_divisor = 200;
            m_factor = mphScale;
            break;
        default:
            m_factor = magnification(config, channel);
        }
    }

    // A height that is no finite single means a run-time failure.
    float operator()(double v) const {
        return static_cast<float>(v / m_divisor * m_factor + m_raise);
    }

private:
    double m_divisor = 1; // 0 is a failure at every value
    double m_factor = 1;
    double m_raise;
};

// Goes through the samples, asks valueAt(i) for each, and puts the points down. Gives the samples
// visited; a failure ends it.
template <typename ValueAt>
int trace(const CurveSource& source, const HeightRule& height, int step, std::vector<Point>& points,
    ValueAt valueAt) {
    // Room for all of them at once: the test for room at every point costs more than the point.
    points.resize(static_cast<std::size_t>((source.sampleCount + step - 1) / step));
    auto next = points.begin();
    int visited = 0;
    for (int i = 1; i <= source.sampleCount; i += step) {
        ++visited;
        const Reading v = valueAt(i);
        if (v.hasFailed()) break;
        if (!v.hasValue()) continue;
        const float y = height(v.value);
        if (!std::isfinite(y)) break;
        *next++ = {static_cast<float>(i + source.shiftX), y};
    }
    points.erase(next, points.end());
    return visited;
}

// A sum of words over its window, rounded to a whole number, ties to even. The sum is kept in 32
// bits.
Reading roundedMean(std::int64_t sum, int window) {
    if (sum < std::numeric_limits<std::int32_t>::min() ||
        sum > std::numeric_limits<std::int32_t>::max()) {
        return Reading::failed();
    }
    return Reading::of(std::nearbyint(static_cast<double>(sum) / window));
}

// Sums of word(row) over the samples from i to i + window - 1, for an i that grows. While windows
// overlap, the rows that they share are not added up again.
template <typename Word> class WindowSum {
public:
    WindowSum(const core::RunImage& image, int window, Word word)
        : m_image(image), m_window(window), m_word(word) {}

    std::int64_t operator()(int i) {
        if (i - m_at < m_window / 2) {
            for (; m_at < i; ++m_at) m_sum += at(m_at + m_window) - at(m_at);
            return m_sum;
        }
        m_at = i;
        m_sum = 0;
        for (int k = i; k < i + m_window; ++k) m_sum += at(k);
        return m_sum;
    }

private:
    std::int64_t at(int i) const { return m_word(m_image.rowOrZero(i)); }

    const core::RunImage& m_image;
    int m_window;
    Word m_word;
    int m_at = std::numeric_limits<int>::min() / 2; // where m_sum begins
    std::int64_t m_sum = 0;
};

// Engine, input, output and speed: the word, or the mean of five.
template <typename Word>
int traceWord(const CurveSource& source, const HeightRule& height, bool smooth,
    std::vector<Point>& points, Word word) {
    const int smoothUpTo = smooth ? source.sampleCount - rpmWindow : 0;
    WindowSum sum(*source.image, rpmWindow, word);
    return trace(source, height, source.step, points, [&](int i) {
        if (i < smoothUpTo) return roundedMean(sum(i), rpmWindow);
        return Reading::of(word(source.image->rowOrZero(i)));
    });
}

int traceClutch(
    const CurveSource& source, const HeightRule& height, bool smooth, std::vector<Point>& points) {
    const auto ratio = primaryRatio(*source.clutchDrive);
    const int smoothUpTo = smooth ? source.sampleCount - rpmWindow : 0;
    const auto rpm = [&ratio](const RunSample& row) {
        return static_cast<std::int64_t>(clutchRpm(*ratio, row.EngineRpm));
    };
    WindowSum sum(*source.image, rpmWindow, rpm);
    return trace(source, height, source.step, points, [&](int i) {
        if (!ratio) return Reading::failed();
        if (i < smoothUpTo) return roundedMean(sum(i), rpmWindow);
        return Reading::of(static_cast<double>(rpm(source.image->rowOrZero(i))));
    });
}

int traceSlip(const CurveSource& source, const HeightRule& height, std::vector<Point>& points) {
    const auto ratio = primaryRatio(*source.drive);
    return trace(source, height, source.step, points, [&](int i) {
        const RunSample& row = source.image->rowOrZero(i);
        return ratio ? slipDrawn(*ratio, row.EngineRpm, row.InputRpm) : Reading::failed();
    });
}

int traceRatio(const CurveSource& source, const HeightRule& height, std::vector<Point>& points) {
    const auto ratio = primaryRatio(*source.drive);
    return trace(source, height, source.step, points, [&](int i) {
        const RunSample& row = source.image->rowOrZero(i);
        // The primary drive is asked for only where the output shaft turns.
        if (row.OutputRpm == 0) return Reading::of(0);
        if (!ratio) return Reading::failed();
        return Reading::of(ratioDrawn(*ratio, row.EngineRpm, row.OutputRpm));
    });
}

int traceAnalog(const CurveSource& source, const HeightRule& height, int n, bool smooth,
    std::vector<Point>& points) {
    const int type = source.image->tail.AnalogTypes[n];
    const int smoothUpTo = smooth ? source.sampleCount - byteWindow : 0;
    const auto byte = [n](const RunSample& row) { return row.Analog[n]; };
    WindowSum sum(*source.image, byteWindow, byte);
    return trace(source, height, source.step, points, [&](int i) {
        if (i >= smoothUpTo) {
            return Reading::of(analogDrawn(byte(source.image->rowOrZero(i)), type));
        }
        const Reading mean = roundedMean(sum(i), byteWindow);
        return Reading::of(analogDrawn(mean.value, type));
    });
}

// The logger of type 20 sends one temperature at a time: bits 4 to 6 of Status name it and
// Analog(7) holds it. Every sample is looked at, whatever the step.
int traceSharedExhaust(
    const CurveSource& source, const HeightRule& height, int n, std::vector<Point>& points) {
    return trace(source, height, 1, points, [&](int i) {
        const RunSample& row = source.image->rowOrZero(i);
        return sharedExhaust(row) == n ? Reading::of(row.Analog[7]) : Reading::none();
    });
}

int traceExhaust(const CurveSource& source, const HeightRule& height, int n, bool smooth,
    std::vector<Point>& points) {
    const int smoothUpTo = smooth ? source.sampleCount - byteWindow : 0;
    const auto byte = [n](const RunSample& row) { return row.Exhaust[n]; };
    WindowSum sum(*source.image, byteWindow, byte);
    return trace(source, height, source.step, points, [&](int i) {
        if (i >= smoothUpTo) return Reading::of(byte(source.image->rowOrZero(i)));
        // Required: the mean of an exhaust is not rounded.
        return Reading::of(static_cast<double>(sum(i)) / byteWindow);
    });
}

bool smoothed(const AppConfig& config, const ChannelFacts& facts) {
    return facts.smoothOption >= 0 &&
           config.SmoothOption[static_cast<std::size_t>(facts.smoothOption)] == 1;
}

} // namespace

int magnification(const AppConfig& config, int channel) {
    const int stored = config.Text_Magnify[static_cast<std::size_t>(channel)];
    return stored != 0 ? stored : channelFacts(channel).magnifyDefault;
}

std::optional<float> curveHeight(
    const AppConfig& config, int channel, double v, int rpmScale, double mphScale) {
    const float y = HeightRule(config, channel, rpmScale, mphScale)(v);
    return std::isfinite(y) ? std::optional<float>(y) : std::nullopt;
}

int makeCurve(const RunView& run, const CurveScale& scale, const AppConfig& config, int channel,
    std::vector<Point>& points) {
    const CurveSource source{run.image, run.slipDrive, &run.ownDrive(), run.rows, scale.step,
        core::exhaustsOf(run.drawType) == core::Exhausts::timeShared, -run.shift};
    const ChannelFacts& facts = channelFacts(channel);
    const HeightRule height(config, channel, scale.rpmScale, scale.mphScale);
    const bool smooth = smoothed(config, facts);
    const core::RunImage& image = *source.image;
    points.clear();
    platform::clearWideRegisters(); // the loading bar was painted just before
    switch (facts.kind) {
    case ChannelKind::engine:
        return traceWord(
            source, height, smooth, points, [](const RunSample& row) { return row.EngineRpm; });
    case ChannelKind::input:
        return traceWord(
            source, height, smooth, points, [](const RunSample& row) { return row.InputRpm; });
    case ChannelKind::output:
        return traceWord(
            source, height, smooth, points, [](const RunSample& row) { return row.OutputRpm; });
    case ChannelKind::mph:
        return traceWord(
            source, height, smooth, points, [](const RunSample& row) { return row.SpeedRaw; });
    case ChannelKind::clutch:
        return traceClutch(source, height, smooth, points);
    case ChannelKind::slip:
        return traceSlip(source, height, points);
    case ChannelKind::ratio:
        return traceRatio(source, height, points);
    case ChannelKind::rocos:
        return trace(source, height, source.step, points,
            [&](int i) { return rocosDrawn(image, source.sampleCount, i); });
    case ChannelKind::tyreGrowth:
        return trace(source, height, source.step, points, [&](int i) {
            const RunSample& row = image.rowOrZero(i);
            return tyreGrowthDrawn(row.SpeedRaw, row.OutputRpm, image.analog);
        });
    case ChannelKind::analog:
        return traceAnalog(source, height, facts.number, smooth, points);
    case ChannelKind::exhaust:
        if (source.timeSharedExhausts)
            return traceSharedExhaust(source, height, facts.number, points);
        return traceExhaust(source, height, facts.number, smooth, points);
    }
    return 0;
}

} // namespace kvo::graph
