// The text form of a key and what is below it; see SRegistry for the form itself.
#ifndef BRCORE8_SRC_SETTINGS_REGISTRY_TEXT_H
#define BRCORE8_SRC_SETTINGS_REGISTRY_TEXT_H

#include <brcore8/strings/string.h>
#include <brcore8/strings/string_buffer.h>

#include <string_view>

namespace brcore8 {

// Both throw SEOutOfMemory.
class SettingsTextWriter {
public:
    explicit SettingsTextWriter(SStringBuffer& out);
    void Key(std::string_view path);
    void Value(std::string_view name, unsigned long type, std::string_view data);

private:
    void Quoted(std::string_view text);
    void Bytes(std::string_view data);

    SStringBuffer& out_;
};

class SettingsTextReader {
public:
    enum class Item { Key, Value, End, Fault };

    explicit SettingsTextReader(std::string_view text) : rest_(text) {}
    // The next item, in Name(), Type() and Data(), until End or Fault.
    Item Next();
    // The line of that item, from 1.
    long Line() const { return line_; }

    // The key's path or the value's name.
    const SString& Name() const { return name_; }
    unsigned long Type() const { return type_; }
    std::string_view Data() const { return data_.View(); }

private:
    bool NextLine();
    bool Take(std::string_view word);
    bool TakeQuoted(SStringBuffer& out);
    bool TakeNumber(unsigned long& number);
    bool TakeBytes();
    bool TakeName();
    bool TakeData();
    Item TakeItem();

    std::string_view rest_;
    std::string_view text_;  // what is left of the line
    long line_ = 0;
    bool begun_ = false;
    bool inKey_ = false;
    SString name_;
    unsigned long type_ = 0;
    SStringBuffer data_{64};
};

}  // namespace brcore8

#endif
