#pragma once

#include <QVector>

#include <benchmark/benchmark.h>

/// A row of the table. Its function is run in a process of its own, with the number of serials.
struct Row
{
    const char *id;
    const char *title;
    void (*run)(benchmark::State &state);
};

namespace rows {

// formats.cpp: the format's two functions alone
extern const Row reader;
extern const Row plainReader;
extern const Row writer;
extern const Row plainWriter;

// takeone.cpp: open, choose, remove, sync
extern const Row takeOne;
extern const Row takeOneIniFormat;
extern const Row takeOneGlib;
extern const Row takeOneQt;
extern const Row takeOneBytes;

// choosing.cpp
extern const Row sorting;
extern const Row childKeys;
extern const Row choosing;

// module.cpp
extern const Row pass;
extern const Row boot;

/// The rows that depend on the number of serials, in the order of the table.
QVector<const Row *> scaling();

} // namespace rows
