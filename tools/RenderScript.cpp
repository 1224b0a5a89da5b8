#include "RenderScript.h"

#include "plugin/BasePlugin.h"

#include <cmath>

namespace
{
bool readNumber(const juce::String& text, double& value)
{
    const auto utf8 = text.trim().toStdString();
    char* end = nullptr;
    value = std::strtod(utf8.c_str(), &end);
    return !utf8.empty() && end == utf8.c_str() + utf8.size() && std::isfinite(value);
}
} // namespace

RenderScript RenderScript::read(const juce::File& file)
{
    juce::String text;
    if (auto stream = file.createInputStream())
        text = stream->readEntireStreamAsString();
    else
        throw BadInput(("script cannot be read: " + file.getFullPathName()).toStdString());
    return parse(text, file.getFileName());
}

RenderScript RenderScript::parse(const juce::String& text, const juce::String& sourceName)
{
    RenderScript script;
    script.source = sourceName;

    juce::StringArray rows;
    rows.addLines(text);
    for (int i = 0; i < rows.size(); ++i)
    {
        Line line;
        line.number = i + 1;
        const auto row = rows[i].trimCharactersAtEnd("\r");
        if (row.trim().isEmpty() || row.trimStart().startsWithChar('#'))
            continue;

        const auto fail = [&](const juce::String& message)
        { throw BadInput((script.where(line) + message).toStdString()); };

        juce::StringArray fields;
        fields.addTokens(row, "\t", {});
        if (fields.size() < 3)
            fail("expected SECONDS<TAB>event<TAB>NAME, SECONDS<TAB>param<TAB>NAME<TAB>VALUE or SECONDS<TAB>click<TAB>NAME");
        if (!readNumber(fields[0], line.seconds) || line.seconds < 0.0)
            fail("the time is not a number of seconds from 0: \"" + fields[0] + "\"");

        line.name = fields[2].trim();
        if (fields[1] == "event" && fields.size() == 3)
            line.isEvent = true;
        else if (fields[1] == "click" && fields.size() == 3)
            line.isClick = true;
        else if (fields[1] == "param" && fields.size() == 4)
        {
            double value = 0.0;
            if (!readNumber(fields[3], value) || value < 0.0 || value > 1.0)
                fail("a parameter's value is a normalised number from 0 to 1, not \"" + fields[3] + "\"");
            line.isEvent = false;
            line.value = (float) value;
        }
        else
            fail("expected SECONDS<TAB>event<TAB>NAME, SECONDS<TAB>param<TAB>NAME<TAB>VALUE or SECONDS<TAB>click<TAB>NAME");

        script.lines.push_back(line);
    }
    return script;
}

juce::String RenderScript::where(const Line& line) const
{
    return "script " + source + ", line " + juce::String(line.number) + ": ";
}

void RenderScript::resolve(BasePlugin& plugin)
{
    for (auto& line : lines)
    {
        if (line.isClick)
            continue;
        if (line.isEvent)
        {
            line.id = plugin.getEvents().getUid(line.name);
            if (line.id < 0)
                throw BadInput((where(line) + "no event is named \"" + line.name + "\"").toStdString());
        }
        else
        {
            const auto* parameter = plugin.getParameterManager().getParameter(line.name);
            if (parameter == nullptr)
                throw BadInput((where(line) + "no parameter is named \"" + line.name + "\"").toStdString());
            line.id = parameter->getId();
        }
    }
}

void RenderScript::resolveClicks(const std::function<bool(const juce::String&)>* hasComponent) const
{
    for (const auto& line : lines)
    {
        if (!line.isClick)
            continue;
        if (hasComponent == nullptr)
            throw BadInput((where(line) + "a click needs the panel: add --snapshot").toStdString());
        if (!(*hasComponent)(line.name))
            throw BadInput((where(line) + "the panel has nothing named \"" + line.name + "\"").toStdString());
    }
}

void RenderScript::checkFitsIn(double seconds) const
{
    for (const auto& line : lines)
        if (line.seconds >= seconds)
            throw BadInput((where(line) + "its time " + juce::String(line.seconds) + " s is past the end of the render at " + juce::String(seconds) + " s")
                               .toStdString());
}

double RenderScript::getLastTime() const
{
    double last = 0.0;
    for (const auto& line : lines)
        last = juce::jmax(last, line.seconds);
    return last;
}

//==============================================================================
ScriptPlayer::ScriptPlayer(const RenderScript& script, BasePlugin& pluginToUse, double sampleRate)
    : plugin(pluginToUse)
{
    fireEvent = [this](int uid)
    { plugin.handleEvent(uid); };

    for (const auto& line : script.getLines())
        pending.emplace_back((juce::int64) std::floor(line.seconds * sampleRate + 0.5), &line);
}

bool ScriptPlayer::applyUntil(juce::int64 blockEnd)
{
    bool any = false;
    for (auto it = pending.begin(); it != pending.end();)
    {
        if (it->first < blockEnd)
        {
            apply(*it->second);
            it = pending.erase(it);
            any = true;
        }
        else
        {
            ++it;
        }
    }
    return any;
}

void ScriptPlayer::apply(const RenderScript::Line& line)
{
    if (line.isClick)
    {
        if (click != nullptr)
            click(line.name);
    }
    else if (line.isEvent)
        fireEvent(line.id);
    else
        plugin.getParameterManager().setNormalised(line.id, line.value); // as a panel control sets it
}
