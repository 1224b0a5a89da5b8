#pragma once

#include "parameters/Parameter.h"

#include <atomic>

// The concrete parameter classes. Each takes id and name, then its range if it
// has one, then the start value, which it stores without notifying. Numeric
// values are atomics: safe to read and set on any thread, the audio thread
// included. StringParameter takes a lock and is not for the audio thread.

// On or off, shown as text in one of four styles.
class BoolParameter : public Parameter
{
public:
    enum TextStyle
    {
        trueFalse = 0,
        onOff = 1,
        oneZero = 2,
        yesNo = 3
    };

    BoolParameter(int id, const juce::String& name, bool startValue, int textStyle = trueFalse);

    std::unique_ptr<Parameter> clone() const override;
    double getValue() const override;
    double getNormalised() const override;
    int getInt() const override;
    bool getBool() const override;
    juce::String getText() const override;
    void setValue(float value, bool notify) override;
    void setNormalised(float value, bool notify) override;
    void setInt(int value, bool notify) override;
    void setBool(bool value, bool notify) override;
    void setText(const juce::String& text, bool notify) override;
    void copyFrom(const Parameter& other, bool notify) override;

    int getTextStyle() const noexcept { return textStyle; }

private:
    void store(bool newValue, bool notify);

    const int textStyle;
    std::atomic<int> value;
};

// A float in [minimum, maximum]; the usual knob.
class FloatParameter : public Parameter
{
public:
    FloatParameter(int id, const juce::String& name, float minimum, float maximum, float startValue);

    std::unique_ptr<Parameter> clone() const override;
    double getValue() const override;
    double getNormalised() const override;
    int getInt() const override;
    bool getBool() const override;
    juce::String getText() const override;
    void setValue(float value, bool notify) override;
    void setNormalised(float value, bool notify) override;
    void setInt(int value, bool notify) override;
    void setBool(bool value, bool notify) override;
    void setText(const juce::String& text, bool notify) override;
    void copyFrom(const Parameter& other, bool notify) override;

    float getMinimum() const noexcept { return minimum; }
    float getMaximum() const noexcept { return maximum; }

private:
    float cutToRange(float x) const noexcept;
    void store(float newValue, bool notify);

    const float minimum, maximum;
    std::atomic<float> value;
};

// An integer in [minimum, maximum].
class IntParameter : public Parameter
{
public:
    IntParameter(int id, const juce::String& name, int minimum, int maximum, int startValue);

    std::unique_ptr<Parameter> clone() const override;
    double getValue() const override;
    double getNormalised() const override;
    int getInt() const override;
    bool getBool() const override;
    juce::String getText() const override;
    void setValue(float value, bool notify) override;
    void setNormalised(float value, bool notify) override;
    void setInt(int value, bool notify) override;
    void setBool(bool value, bool notify) override;
    void setText(const juce::String& text, bool notify) override;
    void copyFrom(const Parameter& other, bool notify) override;

    int getMinimum() const noexcept { return minimum; }
    int getMaximum() const noexcept { return maximum; }

protected:
    // Cuts toward an integer, then to the range.
    int cutToRange(double x) const noexcept;
    void store(int newValue, bool notify);

private:
    const int minimum, maximum;
    std::atomic<int> value;
};

// A choice among named items; the value is the item's index.
class EnumParameter : public IntParameter
{
public:
    // itemsText holds the items separated by ";". The start value is an item
    // or a normalised number, as for setText.
    EnumParameter(int id, const juce::String& name, const juce::String& itemsText, const juce::String& startValue);

    std::unique_ptr<Parameter> clone() const override;
    juce::String getText() const override;
    void setText(const juce::String& text, bool notify) override;

    const juce::StringArray& getItems() const noexcept { return items; }
    const juce::String& getItemsText() const noexcept { return itemsText; }

private:
    // The items without empty ends: ";a;b;" gives "a" and "b".
    static juce::StringArray splitItems(const juce::String& itemsText);

    const juce::StringArray items;
    const juce::String itemsText;
};

// A MIDI key, 0 to 127, shown by name: key 0 is "C0", key 60 "C5".
class NoteParameter : public IntParameter
{
public:
    // The start value is a note name or a normalised number, as for setText.
    NoteParameter(int id, const juce::String& name, const juce::String& startValue);

    std::unique_ptr<Parameter> clone() const override;
    juce::String getText() const override;
    void setText(const juce::String& text, bool notify) override;

    // "C", "C#", "D" ... "B" and the octave, C of octave 0 being key 0; empty
    // out of 0 to 127.
    static juce::String getNoteName(int key);

    // Reads a name of that form (flats such as "Db" too, any letter case).
    // The key may lie outside 0 to 127; false if the text is not a note name.
    static bool parseNoteName(const juce::String& text, int& key);
};

// Free text, under a read-write lock; not for the audio thread.
class StringParameter : public Parameter
{
public:
    StringParameter(int id, const juce::String& name, const juce::String& startValue);

    std::unique_ptr<Parameter> clone() const override;
    double getValue() const override;
    double getNormalised() const override;
    int getInt() const override;
    bool getBool() const override; // true for a text that reads as integer 0, the empty one included
    juce::String getText() const override;
    void setValue(float value, bool notify) override;
    void setNormalised(float value, bool notify) override;
    void setInt(int value, bool notify) override;
    void setBool(bool value, bool notify) override;
    void setText(const juce::String& text, bool notify) override;
    void copyFrom(const Parameter& other, bool notify) override;

private:
    juce::ReadWriteLock lock;
    juce::String value;
};
