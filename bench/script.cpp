// SPDX-FileCopyrightText: 2026 The Proscenium authors
// SPDX-License-Identifier: GPL-2.0-or-later
// Scripts beside Lua 5.4 doing the same work, and how fast definitions are read and scenes entered.
//
// Every workload is a block of many statements against a chunk of as many lines, so that the call from C++ counts for
// nothing. Before a time is taken, both sides run and their values are compared.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <lua.hpp>
#include <map>
#include <new>

#include "definition/element.h"
#include "definition/elements_loader.h"
#include "script/behaviour.h"
#include "structure/scene.h"
#include "support/stage.h"

namespace {

std::int64_t allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    std::abort();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

struct Workload {
    const char* name;
    const char* statement;  // of the script
    const char* lua;        // the same, as a line of Lua
    int copies;             // of the statement in the block, and of the line in the chunk
    int passes;             // that each of them makes
};

// In the scene: INTEGERs A and B, a STRING N that holds a name, C, an INTEGER with handlers, and L and R, ARRAYs of
// 10,000 numbers, those of R in disorder. In Lua: globals of the same names, for any script can reach what a scene
// holds. What is sorted is R's numbers, which L takes by arithmetic.
constexpr const char* kSumScript = "L^SUM(3);A^SET(L^GETSUMVALUE());";
constexpr const char* kSumLua = "l:sum(3) a:set(l:total())";
constexpr const char* kSortScript = "L^SUBA(\"L\");L^SUMA(\"R\");L^SORT(TRUE);A^ADD(L^GET(5000));";
constexpr const char* kSortLua = "l:suba(l) l:suma(r) l:sort() a:add(l:get(5000))";
constexpr Workload kWorkloads[] = {
    {"bound_call",   "A^ADD(1);",                      "a:add(1)",                          100, 1    },
    {"nested_call",  "A^SET(B^GET());",                "a:set(b:get())",                    100, 1    },
    {"expression",   "A^SET([B+A*2]);",                "a:set((b.value + a.value) * 2)",    100, 1    },
    {"call_by_name", "*N^ADD(1);",                     "_G[n.value]:add(1)",                100, 1    },
    {"if_block",     "@IF(\"A\",_,1,{B^ADD(1);});",    "if a.value == 1 then b:add(1) end", 100, 1    },
    {"loop",         "@LOOP({A^ADD(_I_);},0,1000,1);", "for i = 0, 999 do a:add(i) end",    1,   1000 },
    {"signal",       "C^ADD(1);",                      "c:add(1)",                          100, 1    },
    {"array_sum",    kSumScript,                       kSumLua,                             1,   10000},
    {"array_sort",   kSortScript,                      kSortLua,                            1,   10000},
};

std::string sceneText() {
    return lines("A", "INTEGER", "VALUE=1\n") + lines("B", "INTEGER", "VALUE=2\n") + lines("N", "STRING", "VALUE=A\n") +
           lines("C", "INTEGER", "ONCHANGED={B^ADD(1);}\nONCHANGED^-1={B^SET(0);}\n") + lines("L", "ARRAY") +
           lines("R", "ARRAY") +
           lines("FILL", "BOOL", "ONINIT={@LOOP({L^ADD(_I_);R^ADD([_I_*7919%10007]);},0,10000,1);}\n");
}

constexpr const char* kPrelude = R"(
    local Variable = {}
    Variable.__index = Variable
    function Variable:get() return self.value end
    function Variable:set(v) self.value = v end
    function Variable:add(n)
        self.value = self.value + n
        return self.value
    end

    local Observed = setmetatable({}, Variable)
    Observed.__index = Observed
    function Observed:fire(signal, qualifier)
        local handler = self.handlers[signal .. "^" .. qualifier] or self.handlers[signal]
        if handler then handler(self) end
    end
    function Observed:add(n)
        self.value = self.value + n
        self:fire("ONCHANGED", self.value)
        return self.value
    end

    local Array = {}
    Array.__index = Array
    function Array:get(i) return self[i + 1] end
    function Array:sum(n) for i = 1, #self do self[i] = self[i] + n end end
    function Array:suma(other) for i = 1, #self do self[i] = self[i] + other[i] end end
    function Array:suba(other) for i = 1, #self do self[i] = self[i] - other[i] end end
    function Array:sort() table.sort(self) end
    function Array:total()
        local sum = 0
        for i = 1, #self do sum = sum + self[i] end
        return sum
    end
    l, r = setmetatable({}, Array), setmetatable({}, Array)
    for i = 0, 9999 do
        l[i + 1], r[i + 1] = i, i * 7919 % 10007
    end

    a = setmetatable({value = 1}, Variable)
    b = setmetatable({value = 2}, Variable)
    n = setmetatable({value = "a"}, Variable)
    c = setmetatable({value = 0, handlers = {
        ["ONCHANGED"] = function() b:add(1) end,
        ["ONCHANGED^-1"] = function() b:set(0) end,
    }}, Observed)
)";

std::string repeated(const char* text, int copies) {
    std::string all;
    for (int i = 0; i < copies; ++i)
        all.append(text).append("\n");
    return all;
}

class Script {
public:
    explicit Script(const Workload& load) : stage_(sceneText()), block_(scene(), code(load), "bench") { block_.init(); }

    void run() { block_.run(nullptr, nullptr, false); }
    int value(const char* name) { return std::atoi(stage_.value(name).c_str()); }

private:
    static CXString code(const Workload& load) {
        std::string text = repeated(load.statement, load.copies);
        std::erase(text, '\n');
        return std::string_view(text);
    }
    CMC_Scene* scene() {
        stage_.start();
        stage_.frames(1);
        return stage_.current();
    }

    Stage stage_;
    CMC_Behaviour block_;
};

class Lua {
public:
    explicit Lua(const Workload& load) : state_(luaL_newstate()) {
        luaL_openlibs(state_);
        check(luaL_dostring(state_, kPrelude));
        check(luaL_loadstring(state_, repeated(load.lua, load.copies).c_str()));
    }
    ~Lua() { lua_close(state_); }
    Lua(const Lua&) = delete;
    Lua& operator=(const Lua&) = delete;

    void run() {
        lua_pushvalue(state_, -1);
        check(lua_pcall(state_, 0, 0, 0));
    }
    // The low 32 bits, for scripts count with no more.
    int value(const char* name) {
        lua_getglobal(state_, name);
        lua_getfield(state_, -1, "value");
        const auto value = static_cast<int>(static_cast<std::uint32_t>(lua_tointeger(state_, -1)));
        lua_pop(state_, 2);
        return value;
    }

private:
    void check(int status) {
        if (status == LUA_OK) return;
        std::fprintf(stderr, "Lua: %s\n", lua_tostring(state_, -1));
        std::exit(1);
    }

    lua_State* state_;
};

// Whether both sides come to the same values, which the work must have changed.
bool doTheSame(const Workload& load) {
    Script script(load);
    Lua lua(load);
    bool changed = false;
    for (int run = 0; run < 3; ++run) {
        script.run();
        lua.run();
        if (script.value("A") != lua.value("a") || script.value("B") != lua.value("b") ||
            script.value("C") != lua.value("c"))
            return false;
        changed = changed || script.value("A") != 1 || script.value("B") != 2;
    }
    return changed;
}

template <class Side>
void measure(benchmark::State& state, const Workload& load) {
    if (!doTheSame(load)) return state.SkipWithError("the two sides don't do the same");
    Side side(load);
    side.run();
    const std::int64_t before = allocations;
    for ([[maybe_unused]] auto _ : state)
        side.run();
    const double statements = static_cast<double>(state.iterations()) * load.copies * load.passes;
    state.counters["allocations"] = static_cast<double>(allocations - before) / statements;
    state.SetItemsProcessed(static_cast<std::int64_t>(statements));
}

// --- definitions and scenes

// What stands in the files of applications: variables, timers and blocks with their signals, some of them commented.
std::string definitions(int elements) {
    std::string text;
    for (int i = 0; i < elements; ++i) {
        const std::string number = std::to_string(i);
        switch (i % 4) {
            case 0:
                text += "# the state of room " + number + "\n";
                text += lines("VARSTATE" + number, "INTEGER", "VALUE=" + number + "\nTOINI=FALSE\nNETNOTIFY=FALSE\n");
                break;
            case 1:
                text += lines("VARNAME" + number, "STRING", "VALUE=a name of some length\nTOINI=FALSE\n");
                break;
            case 2:
                text += lines("TIMER" + number, "TIMER", "ELAPSE=100\nENABLED=FALSE\nTICKS=5\n");
                break;
            default:
                text += code("BEH" + number, "VARSTATE" + std::to_string(i - 3) + "^ADD(1);@IF(\"VARNAME" +
                                                 std::to_string(i - 2) + "\",_,\"x\",{@BREAK();});");
        }
    }
    return text;
}

void parse(benchmark::State& state) {
    constexpr int kElements = 10000;
    const std::string text = definitions(kElements);
    if (CMElementsLoader::parse(text)->size() != kElements) return state.SkipWithError("elements are missing");
    for ([[maybe_unused]] auto _ : state) {
        std::unique_ptr<CMElements> elements = CMElementsLoader::parse(text);
        benchmark::DoNotOptimize(elements.get());
        state.PauseTiming();
        elements.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void enterScene(benchmark::State& state) {
    constexpr int kObjects = 1000;
    Stage stage;
    stage.scene("T", definitions(kObjects));
    stage.frames(1);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        stage.run("EP^GOTO(\"T\");");
        state.ResumeTiming();
        stage.frames(1);
        state.PauseTiming();
        if (stage.value("VARSTATE996") != "996" || stage.current()->getElementsNo() < kObjects)
            return state.SkipWithError("the scene isn't there");
        stage.run("EP^GOTO(\"S\");");
        stage.frames(1);
        state.ResumeTiming();
    }
}

// --- what is printed

// As on the console, and behind it the least time of each workload on both sides with their ratio.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred) failed_ = true;
            if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
            const double time = run.GetAdjustedCPUTime();
            double& least = least_.try_emplace(run.run_name.function_name, time).first->second;
            least = std::min(least, time);
        }
    }

    void Finalize() override {
        bool first = true;
        for (const Workload& load : kWorkloads) {
            const auto script = least_.find(std::string("script/") + load.name);
            const auto lua = least_.find(std::string("lua/") + load.name);
            if (script == least_.end() || lua == least_.end()) continue;
            if (std::exchange(first, false))
                std::printf("\n| %-14s | script, ns | Lua, ns | ratio |\n|%s|%s|%s|%s|\n", "workload",
                            "----------------", "-----------:", "--------:", "------:");
            const double each = load.copies * load.passes;
            std::printf("| %-14s | %10.1f | %7.1f | %5.2f |\n", load.name, script->second / each, lua->second / each,
                        script->second / lua->second);
        }
    }

    bool failed() const { return failed_; }

private:
    std::map<std::string, double> least_;
    bool failed_ = false;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    for (const Workload& load : kWorkloads) {
        benchmark::RegisterBenchmark((std::string("script/") + load.name).c_str(), measure<Script>, load);
        benchmark::RegisterBenchmark((std::string("lua/") + load.name).c_str(), measure<Lua>, load);
    }
    benchmark::RegisterBenchmark("definitions_of_10000", parse)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("scene_of_1000", enterScene)->Unit(benchmark::kMillisecond);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.failed() ? 1 : 0;
}
