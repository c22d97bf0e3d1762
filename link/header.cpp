#include "link/header.h"

namespace kvo::link {

LoggerHeader::LoggerHeader(core::SharedState& state)
    : DataType(state.DataType), LoggerModel(state.LoggerModel), LoggerVersion(state.LoggerVersion),
      LoggerMemory(state.LoggerMemory), LoggerSerial(state.LoggerSerial),
      RunHeader(state.Run.header) {}

} // namespace kvo::link
