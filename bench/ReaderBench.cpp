// How fast commands are cut and fields are looked up, in bytes of TMATS text per second.
#include "core/TmatsReader.h"
#include "core/document/CommandIndex.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

#include <benchmark/benchmark.h>

namespace kavu {
namespace {

constexpr std::size_t kTextBytes = 16 * 1024 * 1024;

/// Commands of some 42 bytes, one per line, as in the D groups of a large document.
const std::string& commandsOnLines() {
    static const std::string text = [] {
        std::string lines;
        for (int i = 1; lines.size() < kTextBytes; ++i) {
            const auto number = std::to_string(i % 10000);
            lines += "D-1\\MN-" + std::to_string(i % 7) + "-" + number + ":MEASUREMENT_NAME_" +
                     std::to_string(100000 + i % 10000) + "A;\r\n";
        }
        return lines;
    }();
    return text;
}

/// The same with a comment of several lines in every command.
const std::string& commandsOverLines() {
    static const std::string text = [] {
        std::string lines;
        for (int i = 1; lines.size() < kTextBytes; ++i) {
            lines += "C-" + std::to_string(i) +
                     "\\COM:calibrated on the bench\nwith the second set\n"
                     "and checked against the first;\n";
        }
        return lines;
    }();
    return text;
}

void cut(benchmark::State& state, const std::string& text) {
    TmatsReader reader;
    std::string command;
    std::int64_t commands = 0;
    for (auto _ : state) {
        auto source = ByteSource::fromMemory(text);
        long lines = 0;
        while (reader.nextCommand(source, command, &lines)) {
            ++commands;
            benchmark::DoNotOptimize(command.data());
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetItemsProcessed(commands);
}

void NextCommandOneALine(benchmark::State& state) {
    cut(state, commandsOnLines());
}
BENCHMARK(NextCommandOneALine)->Unit(benchmark::kMillisecond);

void NextCommandOverLines(benchmark::State& state) {
    cut(state, commandsOverLines());
}
BENCHMARK(NextCommandOverLines)->Unit(benchmark::kMillisecond);

void NextCommandOneLargeValue(benchmark::State& state) {
    const std::string text =
        "V-1\\COM:" + std::string(static_cast<std::size_t>(state.range(0)), 'v') + ";";
    cut(state, text);
}
BENCHMARK(NextCommandOneLargeValue)
    ->Arg(10'000'000)
    ->Arg(100'000'000)
    ->Unit(benchmark::kMillisecond);

/// A group file in the folder for temporary files, deleted with the object.
class GroupFileOnDisk {
  public:
    explicit GroupFileOnDisk(int fields) {
        const char* const folder = std::getenv("TMPDIR");
        path_ = std::string(folder == nullptr ? "/tmp" : folder) + "/kavu-bench-XXXXXX";
        const int descriptor = mkstemp(path_.data());
        if (descriptor >= 0) {
            close(descriptor);
        }
        std::string text;
        for (int i = 1; i <= fields; ++i) {
            text += "R-1\\TK1-" + std::to_string(i) + ":" + std::to_string(i) + ";\r\n";
        }
        size_ = text.size();
        written_ = writeWholeFile(path_, text);
    }
    GroupFileOnDisk(const GroupFileOnDisk&) = delete;
    GroupFileOnDisk& operator=(const GroupFileOnDisk&) = delete;
    ~GroupFileOnDisk() { (void)deleteFile(path_); }

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] const IoStatus& written() const { return written_; }

  private:
    std::string path_;
    std::size_t size_ = 0;
    IoStatus written_;
};

/// A loader that asks for every field in order, and for one that is missing after each.
void CommandIndexWithMissingFields(benchmark::State& state) {
    const auto fields = static_cast<int>(state.range(0));
    const GroupFileOnDisk file(fields);
    if (!file.written().ok()) {
        state.SkipWithError(file.written().reason().c_str());
        return;
    }
    TmatsReader reader;
    for (auto _ : state) {
        CommandIndex index;
        benchmark::DoNotOptimize(index.readFile(reader, file.path()).ok());
        for (int i = 1; i <= fields; ++i) {
            benchmark::DoNotOptimize(index.find(groupHead('R', 1) + fieldCode("TK1-n", {i})));
            benchmark::DoNotOptimize(index.find(groupHead('R', 1) + fieldCode("TK2-n", {i})));
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}
BENCHMARK(CommandIndexWithMissingFields)->Arg(1000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kavu
