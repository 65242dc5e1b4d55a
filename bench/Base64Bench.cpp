// Base64 beside the block codec of OpenSSL and, where it is installed, the scalar codec of stringencoders
// (modp_b64), in one run. Repetitions of all codecs are mixed, so that a change of the machine's pace meets
// all; the best of each counts.
#include "bench/Comparison.h"
#include "runtime/modBase64.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#ifdef HAS_MODP_B64
#include <modp_b64.h>
#endif

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Convert = void (*)(const Bytes& in, Bytes& out);

const tarv::Base64Codec& codec() {
    static const tarv::Base64Codec instance;
    return instance;
}

/// The other codecs write a NUL behind their result; sizes are chosen without padding.
constexpr std::size_t spare = 16;

void encodeOwn(const Bytes& in, Bytes& out) {
    codec().encode(in, std::span(out).first(out.size() - spare));
}
void decodeOwn(const Bytes& in, Bytes& out) {
    codec().decode(in, std::span(out).first(out.size() - spare));
}
void encodeOpenSsl(const Bytes& in, Bytes& out) {
    EVP_EncodeBlock(out.data(), in.data(), static_cast<int>(in.size()));
}
void decodeOpenSsl(const Bytes& in, Bytes& out) {
    EVP_DecodeBlock(out.data(), in.data(), static_cast<int>(in.size()));
}
void copy(const Bytes& in, Bytes& out) {
    std::memcpy(out.data(), in.data(), std::min(in.size(), out.size()));
}
#ifdef HAS_MODP_B64
const char* text(const Bytes& bytes) {
    return reinterpret_cast<const char*>(bytes.data());
}
char* text(Bytes& bytes) {
    return reinterpret_cast<char*>(bytes.data());
}
void encodeModp(const Bytes& in, Bytes& out) {
    modp_b64_encode(text(out), text(in), in.size());
}
void decodeModp(const Bytes& in, Bytes& out) {
    modp_b64_decode(text(out), text(in), in.size());
}
#endif

Bytes randomBytes(std::size_t size) {
    std::mt19937_64 generator(1);
    Bytes bytes(size);
    for (auto& byte : bytes)
        byte = static_cast<std::uint8_t>(generator());
    return bytes;
}

Bytes digitsOf(const Bytes& bytes) {
    Bytes digits(tarv::Base64Codec::encodedSize(bytes.size()));
    codec().encode(bytes, digits);
    return digits;
}

void measure(benchmark::State& state, Convert convert, bool decoding) {
    const Bytes plain = randomBytes(static_cast<std::size_t>(state.range(0)));
    const Bytes digits = digitsOf(plain);
    const Bytes& in = decoding ? digits : plain;
    const Bytes& expected = decoding ? plain : digits;
    Bytes out(expected.size() + spare);
    for (auto _ : state) {
        convert(in, out);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    out.resize(expected.size());
    if (convert != copy && out != expected)
        state.SkipWithError("wrong result");
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(in.size()));
}

/// Keeps the best throughput of each benchmark and prints the table with the ratios.
class BestOf : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) {
                std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
                failed_ = true;
            } else if (run.run_type == Run::RT_Iteration) {
                double& best = best_[run.run_name.function_name + "/" + run.run_name.args];
                best = std::max(best, run.counters.at("bytes_per_second").value);
            }
        }
    }

    void print() const {
        struct Yardstick {
            const char* id;
            const char* name;
            const char* aim;
        };
        constexpr Yardstick yardsticks[]{
            {"OpenSsl", "OpenSSL", ">= 2"}, {"Modp", "stringencoders", ">= 0.9"}, {"Copy", "memcpy", ""}};
        for (const char* direction : {"encode", "decode"})
            for (const char* size : {"48", "3000", "49152", "50331648"})
                for (const Yardstick& yardstick : yardsticks) {
                    const tarv::bench::Pair speeds{best(direction, "Own", size) / 1e9,
                                                   best(direction, yardstick.id, size) / 1e9};
                    const std::string name = std::string("Base64 ") + direction + ", " + size + " bytes";
                    if (speeds.yardstick > 0)
                        printRow(name.c_str(), yardstick.name, "GB/s", speeds, yardstick.aim);
                }
    }

    bool failed() const { return failed_; }

private:
    double best(const std::string& direction, const std::string& who, const std::string& size) const {
        const auto found = best_.find(direction + who + "/" + size);
        return found == best_.end() ? 0 : found->second;
    }

    std::map<std::string, double> best_;
    bool failed_ = false;
};

void add(const char* name, Convert convert, bool decoding) {
    benchmark::RegisterBenchmark(name, measure, convert, decoding)
        ->Arg(48)
        ->Arg(3000)
        ->Arg(48 << 10)
        ->Arg(48 << 20);
}

} // namespace

int main(int argc, char** argv) {
    add("encodeOwn", encodeOwn, false);
    add("encodeOpenSsl", encodeOpenSsl, false);
    add("decodeOwn", decodeOwn, true);
    add("decodeOpenSsl", decodeOpenSsl, true);
    add("encodeCopy", copy, false);
    add("decodeCopy", copy, true);
#ifdef HAS_MODP_B64
    add("encodeModp", encodeModp, false);
    add("decodeModp", decodeModp, true);
#endif
    std::vector<std::string> settings{argv[0], "--benchmark_min_time=0.02", "--benchmark_repetitions=15",
                                      "--benchmark_enable_random_interleaving=true"};
    settings.insert(settings.end(), argv + 1, argv + argc);
    std::vector<char*> arguments;
    for (auto& setting : settings)
        arguments.push_back(setting.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    BestOf reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print();
    return reporter.failed() ? 1 : 0;
}
