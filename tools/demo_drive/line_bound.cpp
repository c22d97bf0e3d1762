#include "line_bound.h"

#include "link/download.h"

namespace kvo::demo {
namespace {

constexpr double byteSeconds = 10.0 / 9600; // start bit, eight bits, stop bit
constexpr int headerExchanges = 33;         // one byte thrown away, then 32
constexpr int bytesAnExchange = 2;          // a request and its reply, one behind the other

// A batch of B bytes takes B + 1 byte times: the last reply follows the last request.
double fastByteTimes(const link::DownloadType& type) {
    const int batches = (type.SampleCount - 1) / 2; // the last one asked for is never read
    return static_cast<double>(batches) * (2 * type.RecordSize + 1);
}

// One request runs ahead, so requests and replies overlap but for the first.
double safeByteTimes(const link::DownloadType& type) {
    constexpr int bytesTaken = 32; // of a sample with channels that the program leaves out
    const int bytes = type.notAllChannels ? bytesTaken : type.RecordSize;
    return static_cast<double>(type.SampleCount) * bytes + 1;
}

} // namespace

double lineSeconds(const core::SharedState& state, bool greeting) {
    const auto type = link::downloadType(state.Run.DataType);
    if (!type) return 0;
    const bool fast = state.Config.CheckBits[1] != 0;
    const double exchanges = headerExchanges + (greeting ? 1 : 0);
    return byteSeconds *
           (exchanges * bytesAnExchange + (fast ? fastByteTimes(*type) : safeByteTimes(*type)));
}

} // namespace kvo::demo
