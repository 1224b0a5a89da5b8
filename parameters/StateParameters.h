#pragma once

class ParameterManager;

// The parameters that code creates rather than the table: the mirrors of the
// sequencer's modes and of the shown pattern (ids 3000 to 3093), and the
// current preset's number and name (110000, 110001). None is automatable.
// Called once at start-up, on the message thread.

void addStateParameters(ParameterManager& manager);
void addPresetParameters(ParameterManager& manager);
