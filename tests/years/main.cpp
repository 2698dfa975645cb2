// A copy with everything switched on lives through years in which things go wrong (years.h).
//
//     years [--days N] [--changeover midnight|nine|ten] [--seed N]
//
// Without arguments: 40 days over a month's and a year's end, by midnight. The same arguments give the same years. What
// went against a law is told at once, and what happened on that day. Exit status 0 when every law held, 1 when not, 2
// for bad usage.

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "tests/years/years.h"

int main(int argc, char** argv) {
    using namespace nimbry::test;
    mallopt(M_ARENA_MAX, 1);  // the heap's figures are those of one arena
    int days = 40;
    unsigned long seed = 1;
    DayEndHour end = DayEndHour::midnight;
    for (int n = 1; n < argc; n += 2) {
        const std::string option = argv[n], value = n + 1 < argc ? argv[n + 1] : "";
        if (option == "--days" && std::atoi(value.c_str()) > 0) {
            days = std::atoi(value.c_str());
        } else if (option == "--seed" && !value.empty()) {
            seed = std::strtoul(value.c_str(), nullptr, 10);
        } else if (option == "--changeover" && (value == "midnight" || value == "nine" || value == "ten")) {
            end = value == "nine" ? DayEndHour::nine : value == "ten" ? DayEndHour::ten : DayEndHour::midnight;
        } else {
            std::fprintf(stderr, "usage: years [--days N] [--changeover midnight|nine|ten] [--seed N]\n");
            return 2;
        }
    }

    std::printf("%d days, seed %lu, changeover at %s\n", days, seed,
                end == DayEndHour::midnight ? "midnight"
                : end == DayEndHour::nine   ? "nine"
                                            : "ten");
    std::fflush(stdout);
    // A leap year lies behind the second new year.
    using namespace std::chrono;
    Years years(local_days{December / 20 / 2026}, end, static_cast<std::uint32_t>(seed));
    std::size_t told = 0;
    for (int day = 0; day < days && told < 50; ++day) {
        years.live_a_day();
        if (told == years.complaints().size()) continue;
        for (; told < years.complaints().size(); ++told) std::printf("WRONG %s\n", years.complaints()[told].c_str());
        for (const std::string& line : years.story()) std::printf("      %s\n", line.c_str());
        std::fflush(stdout);
    }

    std::printf("%.1f s of the processor, %zu kB of the heap\n", static_cast<double>(std::clock()) / CLOCKS_PER_SEC,
                years.heap() / 1024);
    for (const auto& [what, times] : years.tally()) std::printf("%9d %s\n", times, what.c_str());
    return years.complaints().empty() ? 0 : 1;
}
