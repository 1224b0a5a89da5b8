#pragma once

// Ids of the parameters that code refers to directly. Rows of the table that
// exist once per instrument or track are given by their first id: add the
// instrument or track index.
namespace ParameterIds
{
// Table rows, ids 0 to 212. The host sees exactly ids 0 to 110.
inline constexpr int level = 0;      // + track
inline constexpr int firstKnob = 18; // 18 to 57, the sound knobs
inline constexpr int lastPresetParameter = 57;
inline constexpr int mainVolume = 58;
inline constexpr int mute = 59;          // + instrument
inline constexpr int solo = 76;          // + instrument
inline constexpr int randThreshold = 93; // + track
inline constexpr int lastHostParameter = 110;
inline constexpr int hostParameterCount = 111;
inline constexpr int outputNumber = 111;  // + instrument
inline constexpr int activity = 128;      // + track
inline constexpr int randState = 146;     // + track
inline constexpr int selection = 164;     // + track
inline constexpr int randSelection = 182; // + track
inline constexpr int lengthModeStateWithoutClear = 200;
inline constexpr int lengthModeStateWithClear = 201;
inline constexpr int variationAEditionState = 202;
inline constexpr int variationBEditionState = 203;
inline constexpr int part1EditionState = 204;
inline constexpr int part2EditionState = 205;
inline constexpr int variationAPlayingState = 206;
inline constexpr int variationBPlayingState = 207;
inline constexpr int part1PlayingState = 208;
inline constexpr int part2PlayingState = 209;
inline constexpr int autoFillIn = 210;
inline constexpr int basicVariationMode = 211;
inline constexpr int introFillInVariationMode = 212;
inline constexpr int lastTableParameter = 212;

// State parameters: mirrors of the sequencer's modes for the front panel.
inline constexpr int internalSequencerState = 3000;
inline constexpr int internalSyncState = 3001;
inline constexpr int hostModeState = 3002;
inline constexpr int noteOffState = 3003;
inline constexpr int playState = 3004;
inline constexpr int writeModeState = 3005;
inline constexpr int writeModeActivity = 3006;
inline constexpr int autoFollowState = 3007;
inline constexpr int randomizerState = 3008;
inline constexpr int randomizerActiveAndFilled = 3009;
inline constexpr int randomizerActiveButNotFilled = 3010;
inline constexpr int lengthModeState = 3011;
inline constexpr int tapModeState = 3012;
inline constexpr int flamModeState = 3013;
inline constexpr int nativeModeReadyState = 3014;
inline constexpr int instrumentSelection = 3015;
inline constexpr int instrumentSelectionWithAccentFirst = 3016;
inline constexpr int clipboardTracksState = 3017;
inline constexpr int clipboardPatternState = 3018;
inline constexpr int patternScale6SpbState = 3019;
inline constexpr int patternScale3SpbState = 3020;
inline constexpr int patternScale8SpbState = 3021;
inline constexpr int patternScale4SpbState = 3022;
inline constexpr int patternNumber = 3023;
inline constexpr int patternName = 3024;
inline constexpr int patternNameEditionState = 3025;
inline constexpr int patternTempoState = 3026;
inline constexpr int patternTempo = 3027;
inline constexpr int patternShuffle = 3028;
inline constexpr int patternFlam = 3029;
inline constexpr int stepLengthState = 3030; // + step, 0 to 15
inline constexpr int stepState = 3046;       // + step
inline constexpr int stepBlinking = 3078;    // + step; 3062 to 3077 are unassigned
inline constexpr int stepCount = 16;

// The preset selection, outside the host's range.
inline constexpr int currentPresetNumber = 110000;
inline constexpr int currentPresetName = 110001;
} // namespace ParameterIds
