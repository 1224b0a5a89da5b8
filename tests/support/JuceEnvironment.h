#pragma once

#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

#include <memory>

// JUCE's message manager for the whole run of a test binary, so that tests can
// pump the message loop to see asynchronous updates arrive.
class JuceEnvironment : public ::testing::Environment
{
public:
    void SetUp() override { juce = std::make_unique<juce::ScopedJuceInitialiser_GUI>(); }
    void TearDown() override { juce.reset(); }

private:
    std::unique_ptr<juce::ScopedJuceInitialiser_GUI> juce;
};
