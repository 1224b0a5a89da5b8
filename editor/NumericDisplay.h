#pragma once

#include "editor/GUIController.h"

// One digit of a NumericDisplay: 11 frames, blank and then 0 to 9. It takes
// no clicks; the display behind it does. Message thread.
class NumericDisplayDigit : public juce::Component
{
public:
    NumericDisplayDigit(const juce::Image& image, int width, int height, bool isIntegerDigit);

    // Frame 0 when blank or disabled, else the digit + 1.
    void show(int newDigit, bool shouldBeBlank);
    int getFrame() const;
    bool isBlank() const { return blank; }
    bool isInteger() const { return isIntegerDigit; }
    // The no-image drawing puts a point after the last integer digit; with
    // art, the point is in the art.
    void setPointAfter(bool shouldShowPoint) { pointAfter = shouldShowPoint; }
    int getDigit() const { return digit; }

    void paint(juce::Graphics& g) override;
    void enablementChanged() override { repaint(); }

private:
    int width, height;
    bool isIntegerDigit;
    bool pointAfter = false;
    bool blank = true;
    int digit = 0;
    juce::Image image;
};

// The sign in front of a NumericDisplay that can go below zero: two frames,
// none and the minus. Message thread.
class NumericDisplaySign : public juce::Component
{
public:
    NumericDisplaySign(const juce::Image& image, int width, int height);

    void setNegative(bool shouldBeNegative);
    bool isNegative() const { return negative; }
    void paint(juce::Graphics& g) override;

private:
    int width, height;
    bool negative = false;
    juce::Image image;
};

// A number in bitmap digits, and a control: a vertical drag on a digit moves
// the value by that digit's weight, more pixels per step for the bigger
// digits (upward raises it); a "continous" display takes one step wherever it
// is grabbed. Leading zeros are blank; the digit of weight one and those
// right of it always show. Writes the real value of its parameter. Message
// thread.
class NumericDisplay : public GUIController, public juce::Component
{
public:
    explicit NumericDisplay(const juce::String& name = {});
    ~NumericDisplay() override;

    juce::Component& getComponent() override { return *this; }
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;
    void updateFromParameter(Parameter& changed) override;

    // Clamps; with notify, a changed value goes to the parameter.
    void setValue(double newValue, bool notify);
    double getValue() const { return value; }

    void setControlEnabled(bool shouldBeEnabled) { controlEnabled = shouldBeEnabled; }
    bool isControlEnabled() const { return controlEnabled; }
    bool isContinuous() const { return continuous; }
    int getDigitsNum() const { return digitsNum; }
    NumericDisplayDigit* getDigit(int index) const { return digits[index]; }
    NumericDisplaySign* getSign() const { return sign.get(); }

    void mouseDown(const juce::MouseEvent& e) override;
    void mouseDrag(const juce::MouseEvent& e) override;
    void mouseUp(const juce::MouseEvent& e) override;
    void enablementChanged() override;

private:
    void showValue();

    std::unique_ptr<NumericDisplaySign> sign;
    juce::Image signImage;
    juce::OwnedArray<NumericDisplayDigit> digits;
    int digitsNum = 1;
    double firstDigitOrder = 1.0;
    double scale = 1.0;
    double leftDivisor = 1.0;
    int fractionDigits = 1;
    double minValue = 0.0, maxValue = 0.0;
    double value = 0.0;
    double dragStartValue = 0.0;
    double dragStep = 0.0;
    int pixelsPerStep = 1;
    bool dragging = false;
    bool controlEnabled = true;
    int digitWidth = 0, digitHeight = 0;
    bool continuous = false;
};
