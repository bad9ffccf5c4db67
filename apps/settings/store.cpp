#include "store.h"

#include "texts.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int BOXED_NOTE = 1;

void add(const Setting& setting, const std::string& value) {
    Memory memory;
    if (setting.section == Section::Main)
        memory.addValue(setting.name, value.c_str());
    else
        memory.addValueRtdev(setting.name, value.c_str());
}

void drawSaving(Modal& message) {
    message.setLine1(messageOf("savingl1"));
    message.setLine2(messageOf("savingl2"));
    message.setLine3(messageOf("savingl3"));
    message.drawTimed(BOXED_NOTE);
}

} // namespace

std::string readSetting(const Setting& setting) {
    char value[NVRAM_TEXT_LENGTH];
    Memory memory;
    if (setting.section == Section::Main)
        memory.getSetting(setting.name, value);
    else
        memory.getSettingRtdev(setting.name, value);
    return value;
}

Batch::Entry& Batch::entryOf(const Setting& setting) {
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.setting.section == setting.section && std::strcmp(entry.setting.name, setting.name) == 0;
    });
    if (found != entries.end())
        return *found;
    const std::string stored = readSetting(setting);
    entries.push_back({setting, stored, stored});
    return entries.back();
}

const std::string& Batch::get(const Setting& setting) {
    return entryOf(setting).draft;
}

void Batch::set(const Setting& setting, const std::string& value) {
    entryOf(setting).draft = value;
}

void Batch::revert(const Setting& setting) {
    Entry& entry = entryOf(setting);
    entry.draft = entry.stored;
}

bool Batch::changed() const {
    return isChanged(Section::Main) || isChanged(Section::Rtdev);
}

bool Batch::isChanged(Section section) const {
    return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.setting.section == section && entry.isChanged();
    });
}

bool Batch::store() {
    if (!changed())
        return true;
    Modal message;
    drawSaving(message);
    for (const Entry& entry : entries)
        if (entry.isChanged())
            add(entry.setting, entry.draft);
    // Nothing tells of a failure but the value itself.
    const bool isThere = std::all_of(entries.begin(), entries.end(), [](const Entry& entry) {
        return !entry.isChanged() || readSetting(entry.setting) == entry.draft;
    });
    if (!isThere) {
        for (const Entry& entry : entries)
            if (entry.isChanged())
                add(entry.setting, entry.stored);
        return false;
    }
    Memory memory;
    if (isChanged(Section::Main))
        memory.saveValues();
    if (isChanged(Section::Rtdev))
        memory.saveValuesRtdev();
    memory.commit();
    message.time(RESTART_SECONDS);
    for (Entry& entry : entries)
        entry.stored = entry.draft;
    return true;
}
