#pragma once
// The parts of the measuring. Each adds its rows to the table.
#include "bench/table.h"

namespace kvo::bench {

// Reading and writing a run: one read and one write against one a record, and against bare bytes.
void measureFiles(Table& table);
// Adding a run to an index of 100,000.
void measureIndex(Table& table);
// The full picture against other plotting code and against the pixels alone; the switch bars.
void measureGraph(Table& table);
// Cursor, scrolling, zooming, channels and runs in the graph window; only with Qt.
void measureGraphWindow(Table& table);
// The chooser and the start of the program; only with Qt.
void measureWindow(Table& table);
// The printed table and picture, to PDF files; only with Qt.
void measurePrinting(Table& table);
// The import and the copy of many runs, and the time graph; only with Qt.
void measureLibrary(Table& table);
// A run as a table, and the list of 10,000 runs by kvo-cli.
void measureExport(Table& table);
// Whole transfers over a pseudo-terminal that is as slow as the line: minutes.
void measureDownload(Table& table);
// The pit run's form at the full rate of the line; only with Qt.
void measurePitRun(Table& table);

} // namespace kvo::bench
