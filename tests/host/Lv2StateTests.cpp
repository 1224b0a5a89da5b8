// The built LV2 plug-in as a host that uses lilv keeps a song: the state
// extension saves an instance (lilv_state_new_from_instance), a fresh instance
// takes it back (lilv_state_restore), and both give the same state and play
// the same audio for the same MIDI. No JUCE here: only lilv and the LV2 headers.

#include "StateEdits.h"

#include <gtest/gtest.h>
#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/atom/forge.h>
#include <lv2/atom/util.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/midi/midi.h>
#include <lv2/options/options.h>
#include <lv2/patch/patch.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <array>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace
{
constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;

// The URID map every LV2 host provides.
class Urids
{
public:
    LV2_URID map(const char* uri)
    {
        const auto found = ids.find(uri);
        if (found != ids.end())
            return found->second;
        uris.emplace_back(uri);
        return ids[uri] = (LV2_URID) uris.size();
    }

    const char* unmap(LV2_URID id) const { return id >= 1 && id <= uris.size() ? uris[id - 1].c_str() : nullptr; }

    LV2_URID_Map mapFeature{ this, [](LV2_URID_Map_Handle h, const char* uri)
                             { return static_cast<Urids*>(h)->map(uri); } };
    LV2_URID_Unmap unmapFeature{ this, [](LV2_URID_Unmap_Handle h, LV2_URID id)
                                 { return static_cast<Urids*>(h)->unmap(id); } };

private:
    std::map<std::string, LV2_URID> ids;
    std::vector<std::string> uris;
};

// JUCE's own base64 form ("size.chars", six bits a character, least
// significant first), in which the plug-in's LV2 wrapper keeps its block.
const char* const base64Table = ".ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+";

std::string decodeJuceBase64(const std::string& text)
{
    const auto dot = text.find('.');
    std::string bytes(std::stoul(text.substr(0, dot)), '\0');
    size_t bit = 0;
    for (size_t i = dot + 1; i < text.size(); ++i, bit += 6)
    {
        const auto value = (unsigned) (std::strchr(base64Table, text[i]) - base64Table);
        for (int b = 0; b < 6 && (bit + (size_t) b) / 8 < bytes.size(); ++b)
            if ((value >> b) & 1)
                bytes[(bit + (size_t) b) / 8] = (char) (bytes[(bit + (size_t) b) / 8] | (1 << ((bit + (size_t) b) % 8)));
    }
    return bytes;
}

std::string encodeJuceBase64(const std::string& bytes)
{
    std::string text = std::to_string(bytes.size()) + ".";
    const size_t characters = (bytes.size() * 8 + 5) / 6;
    for (size_t i = 0; i < characters; ++i)
    {
        unsigned value = 0;
        for (int b = 0; b < 6; ++b)
        {
            const size_t bit = i * 6 + (size_t) b;
            if (bit / 8 < bytes.size() && ((unsigned char) bytes[bit / 8] >> (bit % 8)) & 1)
                value |= 1u << b;
        }
        text += base64Table[value];
    }
    return text;
}

// The plug-in's XML inside its block: a mark, a length, the text.
std::string xmlOfBlock(const std::string& block)
{
    if (block.size() < 9)
        return {};
    uint32_t length = 0;
    std::memcpy(&length, block.data() + 4, 4);
    return block.substr(8, std::min<size_t>(length, block.size() - 8));
}

std::string blockOfXml(const std::string& xml)
{
    std::string block(8, '\0');
    const uint32_t mark = 0x21324356, length = (uint32_t) xml.size() + 1;
    std::memcpy(block.data(), &mark, 4);
    std::memcpy(block.data() + 4, &length, 4);
    return block + xml + '\0';
}

class Host
{
public:
    Host()
    {
        world = lilv_world_new();
        auto* bundle = lilv_new_file_uri(world, nullptr, QUINDREL_LV2_DIR "/Quindrel.lv2/");
        lilv_world_load_bundle(world, bundle);
        lilv_node_free(bundle);
        auto* uri = lilv_new_uri(world, QUINDREL_LV2_URI);
        plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world), uri);
        lilv_node_free(uri);

        maxBlock = minBlock = blockSize;
        options = {
            { LV2_OPTIONS_INSTANCE, 0, urids.map(LV2_BUF_SIZE__maxBlockLength), sizeof(int32_t), urids.map(LV2_ATOM__Int), &maxBlock },
            { LV2_OPTIONS_INSTANCE, 0, urids.map(LV2_BUF_SIZE__minBlockLength), sizeof(int32_t), urids.map(LV2_ATOM__Int), &minBlock },
            { LV2_OPTIONS_INSTANCE, 0, urids.map(LV2_BUF_SIZE__nominalBlockLength), sizeof(int32_t), urids.map(LV2_ATOM__Int), &maxBlock },
            { LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr },
        };
        featureList = {
            { LV2_URID__map, &urids.mapFeature },
            { LV2_URID__unmap, &urids.unmapFeature },
            { LV2_OPTIONS__options, options.data() },
            { LV2_BUF_SIZE__boundedBlockLength, nullptr },
        };
        for (auto& f : featureList)
            features.push_back(&f);
        features.push_back(nullptr);
    }

    ~Host() { lilv_world_free(world); }

    LilvWorld* world = nullptr;
    const LilvPlugin* plugin = nullptr;
    Urids urids;
    int32_t maxBlock = 0, minBlock = 0;
    std::vector<LV2_Options_Option> options;
    std::vector<LV2_Feature> featureList;
    std::vector<const LV2_Feature*> features;
};

// One running instance with every port connected.
class Instance
{
public:
    explicit Instance(Host& hostToUse)
        : host(hostToUse)
    {
        instance = lilv_plugin_instantiate(host.plugin, sampleRate, host.features.data());
        if (instance == nullptr)
            return;

        auto* audioClass = lilv_new_uri(host.world, LV2_CORE__AudioPort);
        auto* controlClass = lilv_new_uri(host.world, LV2_CORE__ControlPort);
        auto* atomClass = lilv_new_uri(host.world, LV2_ATOM__AtomPort);
        auto* inputClass = lilv_new_uri(host.world, LV2_CORE__InputPort);

        const auto count = lilv_plugin_get_num_ports(host.plugin);
        std::vector<float> defaults(count, 0.0f);
        lilv_plugin_get_port_ranges_float(host.plugin, nullptr, nullptr, defaults.data());
        controls.assign(count, 0.0f);
        for (uint32_t p = 0; p < count; ++p)
        {
            const auto* port = lilv_plugin_get_port_by_index(host.plugin, p);
            if (lilv_port_is_a(host.plugin, port, audioClass))
            {
                audio.emplace_back(blockSize, 0.0f);
                lilv_instance_connect_port(instance, p, audio.back().data());
            }
            else if (lilv_port_is_a(host.plugin, port, atomClass))
            {
                auto& buffer = lilv_port_is_a(host.plugin, port, inputClass) ? midiIn : eventsOut;
                buffer.assign(8192 / sizeof(uint64_t), 0);
                lilv_instance_connect_port(instance, p, buffer.data());
            }
            else
            {
                controls[p] = std::isnan(defaults[p]) ? 0.0f : defaults[p];
                lilv_instance_connect_port(instance, p, &controls[p]);
                if (lilv_port_is_a(host.plugin, port, controlClass))
                    controlIndex[lilv_node_as_string(lilv_port_get_symbol(host.plugin, port))] = p;
            }
        }
        for (auto* node : { audioClass, controlClass, atomClass, inputClass })
            lilv_node_free(node);
        lilv_instance_activate(instance);
    }

    ~Instance()
    {
        if (instance != nullptr)
        {
            lilv_instance_deactivate(instance);
            lilv_instance_free(instance);
        }
    }

    // One block, with MIDI events as (frame, status, data1, data2) and knobs
    // set as a host sets them, by patch:Set messages before them.
    void run(const std::vector<std::array<int, 4>>& events = {}, const std::map<std::string, float>& knobs = {})
    {
        auto& urids = host.urids;
        LV2_Atom_Forge forge;
        lv2_atom_forge_init(&forge, &urids.mapFeature);
        lv2_atom_forge_set_buffer(&forge, reinterpret_cast<uint8_t*>(midiIn.data()), midiIn.size() * sizeof(uint64_t));
        LV2_Atom_Forge_Frame sequence;
        lv2_atom_forge_sequence_head(&forge, &sequence, 0);
        for (const auto& [uri, value] : knobs)
        {
            LV2_Atom_Forge_Frame object;
            lv2_atom_forge_frame_time(&forge, 0);
            lv2_atom_forge_object(&forge, &object, 0, urids.map(LV2_PATCH__Set));
            lv2_atom_forge_key(&forge, urids.map(LV2_PATCH__property));
            lv2_atom_forge_urid(&forge, urids.map(uri.c_str()));
            lv2_atom_forge_key(&forge, urids.map(LV2_PATCH__value));
            lv2_atom_forge_float(&forge, value);
            lv2_atom_forge_pop(&forge, &object);
        }
        for (const auto& e : events)
        {
            const uint8_t bytes[3] = { (uint8_t) e[1], (uint8_t) e[2], (uint8_t) e[3] };
            lv2_atom_forge_frame_time(&forge, e[0]);
            lv2_atom_forge_atom(&forge, (e[1] & 0xf0) == 0xc0 ? 2 : 3, urids.map(LV2_MIDI__MidiEvent));
            lv2_atom_forge_write(&forge, bytes, (e[1] & 0xf0) == 0xc0 ? 2 : 3);
        }
        lv2_atom_forge_pop(&forge, &sequence);

        auto* out = reinterpret_cast<LV2_Atom*>(eventsOut.data());
        out->type = urids.map(LV2_ATOM__Chunk);
        out->size = (uint32_t) (eventsOut.size() * sizeof(uint64_t) - sizeof(LV2_Atom));
        lilv_instance_run(instance, blockSize);
    }

    LilvState* save()
    {
        return lilv_state_new_from_instance(host.plugin, instance, &host.urids.mapFeature, nullptr, nullptr, nullptr, nullptr,
                                            &Instance::portValue, this, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE, host.features.data());
    }

    void restore(const LilvState* state)
    {
        lilv_state_restore(state, instance, &Instance::setPortValue, this, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE, host.features.data());
    }

    Host& host;
    LilvInstance* instance = nullptr;
    std::vector<std::vector<float>> audio;
    std::vector<float> controls;
    std::vector<uint64_t> midiIn, eventsOut;
    std::map<std::string, uint32_t> controlIndex;

private:
    static const void* portValue(const char* symbol, void* user, uint32_t* size, uint32_t* type)
    {
        auto* self = static_cast<Instance*>(user);
        const auto found = self->controlIndex.find(symbol);
        if (found == self->controlIndex.end())
            return nullptr;
        *size = sizeof(float);
        *type = self->host.urids.map(LV2_ATOM__Float);
        return &self->controls[found->second];
    }

    static void setPortValue(const char* symbol, void* user, const void* value, uint32_t size, uint32_t type)
    {
        auto* self = static_cast<Instance*>(user);
        const auto found = self->controlIndex.find(symbol);
        if (found != self->controlIndex.end() && size == sizeof(float) && type == self->host.urids.map(LV2_ATOM__Float))
            std::memcpy(&self->controls[found->second], value, sizeof(float));
    }
};

std::string toString(Host& host, const LilvState* state)
{
    char* text = lilv_state_to_string(host.world, &host.urids.mapFeature, &host.urids.unmapFeature, state,
                                      "urn:quindrel:song", nullptr);
    std::string result = text != nullptr ? text : "";
    lilv_free(text);
    return result;
}

// The quoted value of the plug-in's state property in the Turtle of a state.
std::string encodedBlock(const std::string& turtle, size_t& start)
{
    const auto property = turtle.find("StateString>");
    start = turtle.find('"', property) + 1;
    return turtle.substr(start, turtle.find('"', start) - start);
}

std::vector<std::vector<float>> play(Instance& instance)
{
    // Half a second of silence first, as a host runs an instance before the
    // song starts: the knobs glide to their places from a new instance's start.
    for (int block = 0; block < 50; ++block)
        instance.run();

    std::vector<std::vector<float>> result(instance.audio.size());
    for (int block = 0; block < 190; ++block)
    {
        std::vector<std::array<int, 4>> events;
        if (block == 0)
            events.push_back({ 10, 0x90, 12, 100 }); // the first host pattern
        if (block == 94)
            events.push_back({ 100, 0xc0, 6, 0 }); // another kit
        instance.run(events);
        for (size_t c = 0; c < instance.audio.size(); ++c)
            result[c].insert(result[c].end(), instance.audio[c].begin(), instance.audio[c].end());
    }
    return result;
}
} // namespace

TEST(PluginLv2State, TheStateExtensionKeepsTheSongAndAFreshInstancePlaysIt)
{
    Host host;
    ASSERT_NE(host.plugin, nullptr) << "no plug-in " << QUINDREL_LV2_URI << " in " << QUINDREL_LV2_DIR;

    Instance original(host);
    ASSERT_NE(original.instance, nullptr) << "the plug-in refused to start";
    ASSERT_EQ(original.audio.size(), 24u);

    // Knobs as a host moves them, the rest by an edited state, as in a song.
    const std::string parameter = QUINDREL_LV2_URI ":";
    original.run({}, { { parameter + "bass_drum_decay", 0.875f }, { parameter + "closed_hi_hat_level", 0.25f }, { parameter + "cow_bell_mute", 1.0f } });
    original.run();

    LilvState* first = original.save();
    ASSERT_NE(first, nullptr);
    auto turtle = toString(host, first);
    lilv_state_free(first);
    size_t start = 0;
    const auto encoded = encodedBlock(turtle, start);
    auto xml = xmlOfBlock(decodeJuceBase64(encoded));
    ASSERT_NE(xml.find("<PluginState application=\"Quindrel\""), std::string::npos) << turtle.substr(0, 1000);
    ASSERT_NE(xml.find("<param name=\"Bass Drum Decay\" value=\"0.875\"/>"), std::string::npos) << "the knob did not reach the state";
    ASSERT_TRUE(StateEdits::apply(xml));
    turtle.replace(start, encoded.size(), encodeJuceBase64(blockOfXml(xml)));
    LilvState* edited = lilv_state_new_from_string(host.world, &host.urids.mapFeature, turtle.c_str());
    ASSERT_NE(edited, nullptr);
    original.restore(edited);
    lilv_state_free(edited);

    // The song as the host saves it, and a fresh instance that opens it.
    LilvState* saved = original.save();
    Instance restored(host);
    // As many blocks as the original ran before the song, so that the noise
    // source of both stands at the same place.
    restored.run();
    restored.run();
    restored.restore(saved);
    LilvState* again = restored.save();
    EXPECT_TRUE(lilv_state_equals(saved, again));
    const auto savedText = toString(host, saved), againText = toString(host, again);
    EXPECT_EQ(savedText, againText);
    size_t ignored = 0;
    const auto savedXml = xmlOfBlock(decodeJuceBase64(encodedBlock(savedText, ignored)));
    EXPECT_NE(savedXml.find("<HostMode state=\"on\"/>"), std::string::npos);
    EXPECT_NE(savedXml.find("<SD out=\"3\"/>"), std::string::npos);
    lilv_state_free(saved);
    lilv_state_free(again);

    // Both play the same.
    const auto a = play(original), b = play(restored);
    float peak = 0.0f, snare = 0.0f;
    for (size_t i = 0; i < a[0].size(); ++i)
    {
        peak = std::max(peak, std::abs(a[0][i]));
        snare = std::max(snare, std::abs(a[4][i]));
    }
    EXPECT_GT(peak, 0.01f) << "the pattern did not play";
    EXPECT_GT(snare, 0.01f) << "the snare did not reach output 3";
    for (size_t c = 0; c < a.size(); ++c)
        ASSERT_EQ(a[c], b[c]) << "channel " << c;
}
