#include "parameters/ParameterTypes.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <charconv>
#include <cmath>

namespace
{
// The shortest text that reads back as the same float: "0.5", "120", "0.121".
juce::String floatToText(float x)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof(buffer), x);
    return juce::String(buffer, (size_t) (result.ptr - buffer));
}

// Normalised values are cut to 0 to 1; a NaN counts as 0.
float cutToUnit(float x)
{
    return std::isnan(x) ? 0.0f : juce::jlimit(0.0f, 1.0f, x);
}
} // namespace

//==============================================================================
BoolParameter::BoolParameter(int parameterId, const juce::String& parameterName, bool startValue, int style)
    : Parameter(parameterId, parameterName)
    , textStyle(style)
    , value(startValue ? 1 : 0)
{
}

std::unique_ptr<Parameter> BoolParameter::clone() const
{
    auto copy = std::make_unique<BoolParameter>(getId(), getName(), getBool(), textStyle);
    copy->setAutomatable(isAutomatable());
    return copy;
}

double BoolParameter::getValue() const { return getBool() ? 1.0 : 0.0; }
double BoolParameter::getNormalised() const { return getValue(); }
int BoolParameter::getInt() const { return getBool() ? 1 : 0; }
bool BoolParameter::getBool() const { return value.load() != 0; }

juce::String BoolParameter::getText() const
{
    const bool on = getBool();

    switch (textStyle)
    {
        case onOff:
            return on ? "on" : "off";
        case oneZero:
            return on ? "1" : "0";
        case yesNo:
            return on ? "yes" : "no";
        default:
            return on ? "true" : "false";
    }
}

void BoolParameter::setValue(float x, bool notify) { store(x != 0.0f, notify); }
void BoolParameter::setNormalised(float x, bool notify) { store(x >= 0.5f, notify); }
void BoolParameter::setInt(int x, bool notify) { store(x != 0, notify); }
void BoolParameter::setBool(bool x, bool notify) { store(x, notify); }

void BoolParameter::setText(const juce::String& text, bool notify)
{
    for (auto* word : { "true", "1", "on", "yes" })
        if (text.equalsIgnoreCase(word))
            return store(true, notify);

    for (auto* word : { "false", "0", "off", "no" })
        if (text.equalsIgnoreCase(word))
            return store(false, notify);

    setNormalised(text.getFloatValue(), notify);
}

void BoolParameter::copyFrom(const Parameter& other, bool notify) { store(other.getBool(), notify); }

void BoolParameter::store(bool newValue, bool notify)
{
    const int v = newValue ? 1 : 0;
    if (value.load() == v)
        return;

    value.store(v);
    valueChanged(notify);
}

//==============================================================================
FloatParameter::FloatParameter(int parameterId, const juce::String& parameterName, float minimumValue, float maximumValue, float startValue)
    : Parameter(parameterId, parameterName)
    , minimum(minimumValue)
    , maximum(maximumValue)
    , value(cutToRange(startValue))
{
}

std::unique_ptr<Parameter> FloatParameter::clone() const
{
    auto copy = std::make_unique<FloatParameter>(getId(), getName(), minimum, maximum, value.load());
    copy->setAutomatable(isAutomatable());
    return copy;
}

double FloatParameter::getValue() const { return value.load(); }

double FloatParameter::getNormalised() const
{
    return ((double) value.load() - minimum) / ((double) maximum - minimum);
}

int FloatParameter::getInt() const { return (int) value.load(); }

// The upper half, the middle included.
bool FloatParameter::getBool() const
{
    const float v = value.load();
    return maximum - v <= v - minimum;
}

juce::String FloatParameter::getText() const { return floatToText(value.load()); }

void FloatParameter::setValue(float x, bool notify) { store(cutToRange(x), notify); }

void FloatParameter::setNormalised(float x, bool notify)
{
    store(cutToRange(minimum + (maximum - minimum) * cutToUnit(x)), notify);
}

void FloatParameter::setInt(int x, bool notify) { store(cutToRange((float) x), notify); }
void FloatParameter::setBool(bool x, bool notify) { store(x ? maximum : minimum, notify); }
void FloatParameter::setText(const juce::String& text, bool notify) { store(cutToRange(text.getFloatValue()), notify); }
void FloatParameter::copyFrom(const Parameter& other, bool notify) { setValue((float) other.getValue(), notify); }

float FloatParameter::cutToRange(float x) const noexcept
{
    return std::isnan(x) ? minimum : juce::jlimit(minimum, maximum, x);
}

void FloatParameter::store(float newValue, bool notify)
{
    if (value.load() == newValue)
        return;

    value.store(newValue);
    valueChanged(notify);
}

//==============================================================================
IntParameter::IntParameter(int parameterId, const juce::String& parameterName, int minimumValue, int maximumValue, int startValue)
    : Parameter(parameterId, parameterName)
    , minimum(minimumValue)
    , maximum(maximumValue)
    , value(cutToRange(startValue))
{
}

std::unique_ptr<Parameter> IntParameter::clone() const
{
    auto copy = std::make_unique<IntParameter>(getId(), getName(), minimum, maximum, value.load());
    copy->setAutomatable(isAutomatable());
    return copy;
}

double IntParameter::getValue() const { return value.load(); }

double IntParameter::getNormalised() const
{
    // A one-item enum has no range to speak of.
    if (maximum == minimum)
        return 0.0;

    return ((double) value.load() - minimum) / ((double) maximum - minimum);
}

int IntParameter::getInt() const { return value.load(); }
bool IntParameter::getBool() const { return value.load() != minimum; }
juce::String IntParameter::getText() const { return juce::String(value.load()); }

void IntParameter::setValue(float x, bool notify) { store(cutToRange(x), notify); }

void IntParameter::setNormalised(float x, bool notify)
{
    // The product is a float, as host values always were; only the rounding
    // is done in double.
    const float scaled = (float) (maximum - minimum) * cutToUnit(x);
    store(cutToRange(minimum + std::floor(scaled + 0.5)), notify);
}

void IntParameter::setInt(int x, bool notify) { store(juce::jlimit(minimum, maximum, x), notify); }
void IntParameter::setBool(bool x, bool notify) { store(x ? maximum : minimum, notify); }
void IntParameter::setText(const juce::String& text, bool notify) { store(cutToRange(text.getDoubleValue()), notify); }
void IntParameter::copyFrom(const Parameter& other, bool notify) { setInt(other.getInt(), notify); }

int IntParameter::cutToRange(double x) const noexcept
{
    if (std::isnan(x))
        return minimum;

    return (int) juce::jlimit((double) minimum, (double) maximum, std::trunc(x));
}

void IntParameter::store(int newValue, bool notify)
{
    if (value.load() == newValue)
        return;

    value.store(newValue);
    valueChanged(notify);
}

//==============================================================================
EnumParameter::EnumParameter(int parameterId, const juce::String& parameterName, const juce::String& text, const juce::String& startValue)
    : IntParameter(parameterId, parameterName, 0, juce::jmax(0, splitItems(text).size() - 1), 0)
    , items(splitItems(text))
    , itemsText(text)
{
    setText(startValue, false);
}

std::unique_ptr<Parameter> EnumParameter::clone() const
{
    auto copy = std::make_unique<EnumParameter>(getId(), getName(), itemsText, juce::String());
    copy->setInt(getInt(), false);
    copy->setAutomatable(isAutomatable());
    return copy;
}

juce::String EnumParameter::getText() const
{
    return items[getInt()]; // empty out of range
}

void EnumParameter::setText(const juce::String& text, bool notify)
{
    const int index = items.indexOf(text);

    if (index >= 0)
        setInt(index, notify);
    else
        setNormalised(text.getFloatValue(), notify);
}

juce::StringArray EnumParameter::splitItems(const juce::String& itemsText)
{
    juce::StringArray result;
    result.addTokens(itemsText, ";", "");

    while (!result.isEmpty() && result[0].isEmpty())
        result.remove(0);

    while (!result.isEmpty() && result[result.size() - 1].isEmpty())
        result.remove(result.size() - 1);

    return result;
}

//==============================================================================
NoteParameter::NoteParameter(int parameterId, const juce::String& parameterName, const juce::String& startValue)
    : IntParameter(parameterId, parameterName, 0, 127, 0)
{
    setText(startValue, false);
}

std::unique_ptr<Parameter> NoteParameter::clone() const
{
    auto copy = std::make_unique<NoteParameter>(getId(), getName(), juce::String());
    copy->setInt(getInt(), false);
    copy->setAutomatable(isAutomatable());
    return copy;
}

juce::String NoteParameter::getText() const { return getNoteName(getInt()); }

void NoteParameter::setText(const juce::String& text, bool notify)
{
    int key = 0;

    if (parseNoteName(text, key))
        setInt(key, notify);
    else
        setNormalised(text.getFloatValue(), notify);
}

juce::String NoteParameter::getNoteName(int key)
{
    // Octave 5 holds middle C, so key 0 is C0.
    return juce::MidiMessage::getMidiNoteName(key, true, true, 5);
}

bool NoteParameter::parseNoteName(const juce::String& text, int& key)
{
    static constexpr int semitoneOfLetter[] = { 9, 11, 0, 2, 4, 5, 7 }; // A to G

    const auto t = text.trim();
    const auto letter = juce::CharacterFunctions::toUpperCase(t[0]);

    if (letter < 'A' || letter > 'G')
        return false;

    int semitone = semitoneOfLetter[letter - 'A'];
    int pos = 1;

    if (t[pos] == '#')
    {
        ++semitone;
        ++pos;
    }
    else if (t[pos] == 'b')
    {
        --semitone;
        ++pos;
    }

    const auto octave = t.substring(pos);
    const auto digits = octave.startsWithChar('-') ? octave.substring(1) : octave;

    // A few digits at most, so that the arithmetic cannot overflow.
    if (digits.isEmpty() || digits.length() > 3 || !digits.containsOnly("0123456789"))
        return false;

    key = octave.getIntValue() * 12 + semitone;
    return true;
}

//==============================================================================
StringParameter::StringParameter(int parameterId, const juce::String& parameterName, const juce::String& startValue)
    : Parameter(parameterId, parameterName)
    , value(startValue)
{
}

std::unique_ptr<Parameter> StringParameter::clone() const
{
    auto copy = std::make_unique<StringParameter>(getId(), getName(), getText());
    copy->setAutomatable(isAutomatable());
    return copy;
}

double StringParameter::getValue() const { return getText().getDoubleValue(); }
double StringParameter::getNormalised() const { return juce::jlimit(0.0, 1.0, getValue()); }
int StringParameter::getInt() const { return getText().getIntValue(); }

// Kept as it has always behaved: any text that does not read as a non-zero
// integer, the empty one included, is true.
bool StringParameter::getBool() const { return getInt() == 0; }

juce::String StringParameter::getText() const
{
    const juce::ScopedReadLock sl(lock);
    return value;
}

void StringParameter::setValue(float x, bool notify) { setText(floatToText(x), notify); }
void StringParameter::setNormalised(float x, bool notify) { setText(floatToText(x), notify); }
void StringParameter::setInt(int x, bool notify) { setText(juce::String(x), notify); }
void StringParameter::setBool(bool x, bool notify) { setText(x ? "true" : "false", notify); }

void StringParameter::setText(const juce::String& text, bool notify)
{
    {
        const juce::ScopedWriteLock sl(lock);

        if (value == text)
            return;

        value = text;
    }

    valueChanged(notify);
}

void StringParameter::copyFrom(const Parameter& other, bool notify) { setText(other.getText(), notify); }
