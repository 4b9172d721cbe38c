// The measurement database with 50,000 records: read, check, index, and the records of a stream.
#include "DatabaseRecords.h"
#include "StreamWorld.h"
#include "conversion/ConversionStore.h"
#include "core/WorkingStore.h"
#include "core/files/FileIo.h"
#include "core/talk/Messages.h"
#include "core/text/Clock.h"
#include "mdb/operations/StreamUpdate.h"
#include "mdb/storage/MeasurementDatabase.h"

#include <string>
#include <sys/resource.h>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

constexpr const char* kPath = "/tmp/kavu-database-bench";

struct World {
    static Environment environment() {
        Environment made;
        made.variable = [](const std::string&) { return std::nullopt; };
        made.programFolder = "/tmp";
        return made;
    }
    ~World() { (void)deleteFile(kPath); }

    WorkingStore store{environment()};
    Messages messages{store};
};

void write(World& world, MdbVersion version, long count) {
    (void)deleteFile(kPath);
    MeasurementDatabase database(world.messages, kPath, version, {});
    (void)database.open();
    MeasurementDatabase::Batch batch(database, nullptr);
    for (long i = 0; i < count; ++i) {
        (void)database.add(nullptr, bench::recordOf(i));
    }
    (void)batch.commit(nullptr);
}

void tellMemory(benchmark::State& state) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peakMB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

/// Whether the reading of the file is part of the time.
enum class Reading { Measured, Before };

template <typename Work>
void measure(benchmark::State& state, Work work, Reading reading = Reading::Measured) {
    World world;
    const auto version = static_cast<MdbVersion>(state.range(0));
    write(world, version, state.range(1));
    for (auto _ : state) {
        if (reading == Reading::Before) {
            state.PauseTiming();
        }
        MeasurementDatabase database(world.messages, kPath, version, {});
        (void)database.open();
        if (reading == Reading::Before) {
            state.ResumeTiming();
        }
        work(database);
    }
    tellMemory(state);
}

void databaseValidate(benchmark::State& state) {
    measure(state, [](MeasurementDatabase& database) {
        benchmark::DoNotOptimize(database.validate(nullptr, 2011).hasFaults);
    });
}
void databaseOpen(benchmark::State& state) {
    measure(state,
            [](MeasurementDatabase& database) { benchmark::DoNotOptimize(database.isOpen()); });
}
void databaseNameIndex(benchmark::State& state) {
    measure(
        state,
        [](MeasurementDatabase& database) {
            benchmark::DoNotOptimize(database.loadNameIndex(nullptr));
        },
        Reading::Before);
}
void databaseWalk(benchmark::State& state) {
    measure(state, [](MeasurementDatabase& database) {
        std::size_t bytes = 0;
        for (auto record = database.first(); record; record = database.next()) {
            bytes += record->name().size();
        }
        benchmark::DoNotOptimize(bytes);
    });
}
void databaseWrite(benchmark::State& state) {
    World world;
    for (auto _ : state) {
        write(world, static_cast<MdbVersion>(state.range(0)), state.range(1));
    }
    tellMemory(state);
}

/// An update of all fields of a stream whose measurements are in a database of 50,000 records, in
/// another order than the stream has them; the conversion records are new.
void databaseUpdatesStream(benchmark::State& state) {
    World world;
    const auto count = state.range(0);
    write(world, MdbVersion::WithBus, 50'000);
    for (auto _ : state) {
        state.PauseTiming();
        bench::StreamWorld stream;
        ConversionStore conversions(stream.context);
        stream.format.raiseNumberOfFrames({}, 1);
        (void)stream.format.allocateWords({}, 101);
        for (long i = 0; i < count; ++i) {
            Measurement measurement;
            measurement.name = "MEASUREMENT-" + std::to_string((i * 7919) % 50'000);
            measurement.locationType = "MF";
            const auto fwp = 1 + static_cast<int>(i % 100);
            stream.format.cells().store(stream.format.getFreeCell(nullptr, fwp, 1), measurement);
        }
        MeasurementDatabase database(stream.messages, kPath, MdbVersion::WithBus, {});
        (void)database.open();
        DatabaseWork work{stream.context, conversions, stream.format, database};
        StreamUpdateChoice choice;
        choice.fields.set();
        state.ResumeTiming();
        if (updateStream(work, nullptr, choice).updated != count) {
            state.SkipWithError("not every measurement was updated");
        }
    }
    tellMemory(state);
}

// The form, and the number of records.
BENCHMARK(databaseUpdatesStream)->Arg(2'000)->Arg(20'000)->Unit(benchmark::kMillisecond);
BENCHMARK(databaseWrite)->Args({1, 50'000})->Args({2, 50'000})->Unit(benchmark::kMillisecond);
BENCHMARK(databaseOpen)->Args({1, 50'000})->Args({2, 50'000})->Unit(benchmark::kMillisecond);
BENCHMARK(databaseNameIndex)
    ->Args({1, 5'000})
    ->Args({1, 50'000})
    ->Args({2, 5'000})
    ->Args({2, 50'000})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(databaseWalk)->Args({1, 50'000})->Args({2, 50'000})->Unit(benchmark::kMillisecond);
BENCHMARK(databaseValidate)
    ->Args({0, 50'000})
    ->Args({1, 5'000})
    ->Args({1, 50'000})
    ->Args({2, 5'000})
    ->Args({2, 50'000})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
