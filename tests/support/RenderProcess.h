#pragma once

#include <juce_core/juce_core.h>

// quindrel-render run as a user runs it: a separate process, with what it
// printed and its exit code.
struct RenderRun
{
    int exitCode = -1;
    juce::String output;
};

inline RenderRun runRender(const juce::StringArray& arguments, int streams = juce::ChildProcess::wantStdOut | juce::ChildProcess::wantStdErr)
{
    juce::StringArray command{ QUINDREL_RENDER_PATH };
    command.addArray(arguments);
    juce::ChildProcess process;
    RenderRun run;
    if (process.start(command, streams))
    {
        run.output = process.readAllProcessOutput();
        process.waitForProcessToFinish(60000); // the output can end before the process has been reaped
        run.exitCode = (int) process.getExitCode();
    }
    return run;
}
