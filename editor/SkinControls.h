#pragma once

#include "editor/GUIController.h"

#include <memory>

// Makes the control of a skin element's tag ("Knob", "Switch", "Animation",
// "Button", "ToggleButton", "MultiStateButton", "Display", "DisplayFloat",
// "Rocker", "Panel", "NumericDisplay", "PatternNumberDisplay"), named as
// given, and points controller at it. Null for any other tag.
std::unique_ptr<juce::Component> createSkinControl(const juce::String& tag, const juce::String& name, GUIController*& controller);
