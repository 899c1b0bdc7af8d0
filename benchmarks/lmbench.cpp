// The plug-in's cost to its host, each figure a ratio against a floor measured
// in the same run so that it holds on a noisy machine:
//   start-up  initPreferencesPlugin, defaults, initial apply and updateGUI of
//             every category, against building every generated form bare;
//   accept    one OK cycle (storeGUI then apply of every category), against one
//             typed write and one typed read per key on the store alone;
//   store     getFromMessage / setToMessage against a map lookup and any_cast;
//   memory    resident memory that start-up adds over a bare QApplication.
#include "lmAllForms.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmMessage.h"
#include "lmMessageHelpers.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLibrary>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <unistd.h>

namespace {

using Entry = void (*)();

Entry loadPlugin(QLibrary &library)
{
    library.setFileName(QStringLiteral(LM_PLUGIN_PATH));
    return reinterpret_cast<Entry>(library.resolve("initPreferencesPlugin"));
}

void startUp(Entry initPreferencesPlugin)
{
    initPreferencesPlugin();
    lmPreferencesHost::setDefaultAll(false);
    lmPreferencesHost::updateGUIAll();
    lmPreferencesHost::applyAll();
}

double residentMiB()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0.0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toDouble() * double(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0) : 0.0;
}

// How many pages use each form (the CAD pages share one), counted once from
// a started plug-in, so that the floor builds what start-up builds.
std::vector<std::pair<const lmForm *, int>> &formsOfThePages()
{
    static std::vector<std::pair<const lmForm *, int>> forms;
    return forms;
}

void countFormsOfThePages()
{
    std::map<QString, int> pagesPerForm;
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
        ++pagesPerForm[page.widget->objectName()];
    for (const lmForm &form : lmAllForms()) {
        auto it = pagesPerForm.find(QString::fromLatin1(form.name));
        formsOfThePages().emplace_back(&form, it == pagesPerForm.end() ? 1 : it->second);
    }
}

void BM_StartupFloor(benchmark::State &state)
{
    for (auto _ : state) {
        std::vector<QWidget *> widgets;
        for (const auto &entry : formsOfThePages())
            for (int i = 0; i < entry.second; ++i)
                widgets.push_back(entry.first->build());
        state.PauseTiming();
        qDeleteAll(widgets);
        state.ResumeTiming();
    }
}

void BM_Startup(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        lmHostSettings::resetHost();
        lmCallLog::setRecording(false);
        QLibrary library;
        Entry entry = loadPlugin(library);
        if (!entry) {
            state.SkipWithError("plug-in not loaded");
            break;
        }
        state.ResumeTiming();
        startUp(entry);
        state.PauseTiming();
        library.unload();
        state.ResumeTiming();
    }
}

// The module stays loaded for the figures below.
QLibrary &loadedPlugin()
{
    static QLibrary library;
    static bool started = false;
    if (!started) {
        started = true;
        lmHostSettings::resetHost();
        lmCallLog::setRecording(false);
        if (Entry entry = loadPlugin(library))
            startUp(entry);
    }
    return library;
}

// One typed write and one typed read of value under key.
template <class T>
void rewrite(lmMessage &store, const std::string &key, const T &value)
{
    const T copy = value;
    T out{};
    benchmark::DoNotOptimize(setToMessage(store, key, copy, true));
    benchmark::DoNotOptimize(getFromMessage(store, key, out));
}

void BM_AcceptFloor(benchmark::State &state)
{
    loadedPlugin();
    lmMessage &store = lmPreferences::getData();
    const std::map<std::string, boost::any> values = store.values();
    for (auto _ : state)
        for (const auto &entry : values)
            lmVisitValue(entry.second, [&](const auto &value) { rewrite(store, entry.first, value); });
    state.counters["keys"] = double(values.size());
}

void BM_Accept(benchmark::State &state)
{
    loadedPlugin();
    for (auto _ : state) {
        lmPreferencesHost::storeGUIAll();
        lmPreferencesHost::applyAll();
        state.PauseTiming();
        lmPreferencesHost::resetUnchanged();
        state.ResumeTiming();
    }
}

const std::string kKey = "Camera fov";

void BM_MapAnyCast(benchmark::State &state)
{
    loadedPlugin();
    const lmMessage &store = lmPreferences::getData();
    for (auto _ : state) {
        auto it = store.values().find(kKey);
        const float *value = it == store.values().end() ? nullptr : boost::any_cast<float>(&it->second);
        benchmark::DoNotOptimize(value ? *value : 0.0f);
    }
}

void BM_GetFromMessage(benchmark::State &state)
{
    loadedPlugin();
    const lmMessage &store = lmPreferences::getData();
    for (auto _ : state) {
        float value = 0.0f;
        benchmark::DoNotOptimize(getFromMessage(store, kKey, value));
        benchmark::DoNotOptimize(value);
    }
}

void BM_MapAnyCompare(benchmark::State &state)
{
    loadedPlugin();
    const lmMessage &store = lmPreferences::getData();
    const float fov = 45.0f;
    for (auto _ : state) {
        auto it = store.values().find(kKey);
        const float *value = it == store.values().end() ? nullptr : boost::any_cast<float>(&it->second);
        benchmark::DoNotOptimize(value && *value == fov);
    }
}

void BM_SetToMessage(benchmark::State &state)
{
    loadedPlugin();
    lmMessage &store = lmPreferences::getData();
    const float fov = 45.0f;
    store.set(kKey, boost::any(fov), true);
    for (auto _ : state)
        benchmark::DoNotOptimize(setToMessage(store, kKey, fov, true));
}

BENCHMARK(BM_StartupFloor)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_Startup)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_AcceptFloor)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Accept)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_MapAnyCast);
BENCHMARK(BM_GetFromMessage);
BENCHMARK(BM_MapAnyCompare);
BENCHMARK(BM_SetToMessage);

// Keeps each benchmark's CPU time per iteration (in nanoseconds) for the ratios.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    // Plain text: the figures are meant to be copied into the README.
    RatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            if (!run.error_occurred && run.iterations > 0)
                m_nanoseconds[run.run_name.function_name] = run.cpu_accumulated_time * 1e9 / double(run.iterations);
    }

    double ns(const std::string &name) const
    {
        auto it = m_nanoseconds.find(name);
        return it == m_nanoseconds.end() ? 0.0 : it->second;
    }

private:
    std::map<std::string, double> m_nanoseconds;
};

void printRatio(const char *figure, double measured, double floor, double goal, const char *unit, double scale)
{
    const double ratio = floor > 0.0 ? measured / floor : 0.0;
    std::printf("%-10s %10.3f %s against a floor of %10.3f %s: ratio %.2f (goal at most %.2f: %s)\n", figure,
                measured / scale, unit, floor / scale, unit, ratio, goal, ratio <= goal ? "met" : "NOT met");
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    // Memory first, on a fresh process: a bare application with a shown
    // widget has every Qt library and the platform plug-in loaded.
    QLabel bare(QStringLiteral("bare"));
    bare.show();
    QApplication::processEvents();
    // The real host records no call log; measure the plug-in alone.
    lmCallLog::setRecording(false);
    const double before = residentMiB();
    {
        QLibrary library;
        Entry entry = loadPlugin(library);
        if (!entry) {
            std::fprintf(stderr, "lmbench: %s\n", qPrintable(library.errorString()));
            return 1;
        }
        startUp(entry);
        const double after = residentMiB();
        countFormsOfThePages();
        std::printf("memory: start-up adds %.1f MiB resident (%.1f MiB bare, %.1f MiB started)\n", after - before,
                    before, after);
        library.unload();
        lmHostSettings::resetHost();
    }

    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\n");
    printRatio("start-up", reporter.ns("BM_Startup"), reporter.ns("BM_StartupFloor"), 1.25, "ms", 1e6);
    printRatio("accept", reporter.ns("BM_Accept"), reporter.ns("BM_AcceptFloor"), 3.0, "us", 1e3);
    printRatio("read", reporter.ns("BM_GetFromMessage"), reporter.ns("BM_MapAnyCast"), 1.5, "ns", 1.0);
    printRatio("write", reporter.ns("BM_SetToMessage"), reporter.ns("BM_MapAnyCompare"), 1.5, "ns", 1.0);

    loadedPlugin().unload();
    benchmark::Shutdown();
    return 0;
}
