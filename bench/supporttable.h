#pragma once

#include "support.h"
#include "supportreference.h"
#include "supportwindow.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

// What prints the figures of commands that are measured in processor time.

namespace quillon::bench {

/// The times of some work, and those of what it is held to, taken in turn.
struct Runs
{
    std::vector<Times> times;
    std::vector<double> beside;
};

/// The figures of the commands, a row each as they come.
class Table
{
public:
    void head() const
    {
        std::printf("%-52s %10s %10s %10s %10s %8s %8s\n", "processor time", "usual ms", "worst ms",
            "kernel ms", "reference", "ratio", "bar");
    }
    // The bar is how many times the work beside it the median may take, and these milliseconds more; 0 is
    // none. Of both it is the median that counts, or what another part of them stays below.
    void row(const char *name, Runs runs, double bar = 0, double more = 0, double part = half)
    {
        std::ranges::sort(runs.times, {}, &Times::all);
        const auto place = static_cast<std::size_t>(static_cast<double>(runs.times.size()) * part);
        const Times usual = runs.times[place];
        const double beside = quantileOf(runs.beside, part);
        const double ratio = (usual.all - more) / beside;
        const bool missed = bar > 0 && ratio > bar;
        std::printf("%-52s %10.1f %10.1f %10.1f %10.1f %8.2f %8s%s\n", name, usual.all, runs.times.back().all,
            usual.kernel, beside, ratio, bar > 0 ? qPrintable(QString::number(bar)) : "-",
            missed ? "  MISSED" : "");
        m_missed = m_missed || missed;
    }
    // A whole command that changes the log and saves it: it may take one and a half times the processor time
    // of writing the same bytes plainly, and 2 ms more. A file system that tidies up takes several saves'
    // time, of either as chance has it; the quickest quarter of both is without it.
    void change(const char *name, Runs runs) { row(name, std::move(runs), 1.5, 2, quarter); }
    void memory(const char *name, double megabytes, double bar)
    {
        std::printf("%-52s %7.0f MB %32.0f MB%s\n", name, megabytes, bar, megabytes > bar ? "  MISSED" : "");
        m_missed = m_missed || megabytes > bar;
    }
    [[nodiscard]] bool missed() const { return m_missed; }

private:
    bool m_missed = false;
};

} // namespace quillon::bench
