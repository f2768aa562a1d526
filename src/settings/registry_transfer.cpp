#include <brcore8/settings/registry.h>

#include "settings/registry_access.h"
#include "settings/registry_text.h"

using namespace brcore8;

namespace {

using Item = SettingsTextReader::Item;

bool WriteValues(SettingsTextWriter& writer, HKEY key) {
    char name[kValueNameRoom];
    ValueData data;
    for (DWORD index = 0;; ++index) {
        const long status = ValueOfKey(key, index, name, data);
        if (status != ERROR_SUCCESS) return status == ERROR_NO_MORE_ITEMS;
        writer.Value(name, data.type, data.Bytes());
    }
}

// The path of the key where a walk stands, as it goes down and up.
class WalkedPath {
public:
    void Down(const char* name) {
        lengths_.Add(path_.LengthByte());
        if (!path_.IsEmpty()) path_ += '\\';
        path_ += name;
    }
    void Up() {
        const auto length = static_cast<std::size_t>(lengths_[lengths_.GetCount() - 1]);
        lengths_.Remove(lengths_.GetCount() - 1);
        path_ = path_.View().substr(0, length);
    }
    std::string_view View() const { return path_.View(); }

private:
    SStringBuffer path_{256};
    STable<int> lengths_;
};

// Every key before those below it. False when one could not be read.
bool WriteKeys(SettingsTextWriter& writer, HKEY key) {
    WalkedPath path;
    KeyWay way;
    char name[kKeyNameRoom];
    writer.Key("");
    if (!WriteValues(writer, key)) return false;
    for (DWORD first = 0;;) {
        const HKEY at = way.IsEmpty() ? key : way.Last().key;
        const long status = NameOfKey(at, way.IsEmpty() ? first++ : way.Last().next++, name);
        if (status == ERROR_SUCCESS) {
            if (!way.Down(key, name)) return false;
            path.Down(name);
            writer.Key(path.View());
            if (!WriteValues(writer, way.Last().key)) return false;
        } else if (status != ERROR_NO_MORE_ITEMS || way.IsEmpty()) {
            return status == ERROR_NO_MORE_ITEMS;
        } else {
            way.Up(key, false);
            path.Up();
        }
    }
}

// Writes what has been checked below `root`.
bool WriteItems(const SString& text, HKEY root) {
    SettingsTextReader reader(text.View());
    KeyOwner key(nullptr);
    for (;;) {
        switch (reader.Next()) {
            case Item::Key:
                key.Reset(MakeSettingsKey(root, reader.Name()));
                if (key.Get() == nullptr) return false;
                break;
            case Item::Value: {
                const std::string_view data = reader.Data();
                if (RegSetValueExA(key.Get(), reader.Name(), 0, static_cast<DWORD>(reader.Type()),
                                   reinterpret_cast<const BYTE*>(data.data()),
                                   static_cast<DWORD>(data.size())) != ERROR_SUCCESS)
                    return false;
                break;
            }
            case Item::End:
                return true;
            case Item::Fault:
                return false;
        }
    }
}

}  // namespace

long SRegistry::ExportText(SString* text) const {
    if (text == nullptr) return SettingsNullPointer;
    if (key_ == nullptr) return SettingsFailed;
    return Guarded([&]() -> long {
        SStringBuffer out(4096);
        SettingsTextWriter writer(out);
        // One state of the store; where that has no batches, or is not there yet, what is seen.
        const BatchOwner batch(key_, false);
        if (!WriteKeys(writer, key_)) return SettingsFailed;
        *text = out;
        return SettingsDone;
    });
}

long SRegistry::CheckText(const SString& text, long* line) {
    if (line != nullptr) *line = 0;
    return Guarded([&]() -> long {
        SettingsTextReader reader(text.View());
        for (;;) {
            const Item item = reader.Next();
            if (item == Item::End) return SettingsDone;
            if (item != Item::Fault) continue;
            if (line != nullptr) *line = reader.Line();
            return SettingsFailed;
        }
    });
}

long SRegistry::ImportText(const SString& text) {
    if (key_ == nullptr || CheckText(text, nullptr) < 0) return SettingsFailed;
    return Guarded([&]() -> long {
        BatchOwner batch(key_, true);
        if (!batch.HasBegun() || !WriteItems(text, key_)) return SettingsFailed;
        return batch.Keep() ? SettingsDone : SettingsFailed;
    });
}
