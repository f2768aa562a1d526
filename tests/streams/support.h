// What the stream tests share: a folder of one's own, files as strings, streams and disks that
// fail.
#ifndef BRCORE8_TESTS_STREAMS_SUPPORT_H
#define BRCORE8_TESTS_STREAMS_SUPPORT_H

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>
#include <brcore8/streams/file.h>
#include <brcore8/streams/input_stream.h>
#include <brcore8/streams/output_stream.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <typeinfo>

using namespace std::string_literals;
using namespace std::string_view_literals;

// A fresh folder, removed with everything in it.
class Folder {
public:
    Folder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("brcore8-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string operator/(const char* name) const { return (path_ / name).string(); }
    const std::filesystem::path& Path() const { return path_; }
    long Entries() const {
        return std::distance(std::filesystem::directory_iterator(path_),
                             std::filesystem::directory_iterator());
    }

private:
    std::filesystem::path path_;
};

inline void Put(const std::string& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.flush()) << path;
}

inline std::string Get(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// "SEIOException: text" for what the call throws; "" when it throws nothing.
template <typename Call>
std::string Thrown(Call call) {
    try {
        call();
    } catch (const SEOutOfMemory&) {
        return "SEOutOfMemory";
    } catch (const SENotImplemented&) {
        return "SENotImplemented";
    } catch (const SEUTFException& error) {
        return "SEUTFException: "s + error.GetText();
    } catch (const SEEOFException& error) {
        return "SEEOFException: "s + error.GetText();
    } catch (const SEIOAbortedException& error) {
        return "SEIOAbortedException: "s + error.GetText();
    } catch (const SEIOException& error) {
        return "SEIOException: "s + error.GetText();
    } catch (const SEZipException& error) {
        return "SEZipException: "s + error.GetText();
    } catch (const SException& error) {
        return "SException: "s + error.GetText();
    }
    return "";
}

// A source of the given bytes that gives at most `portion` a block, says EndOfData at the end, and
// fails at its n-th read (0: never). It knows only what every stream must.
class Source : public SInputStream {
public:
    explicit Source(std::string bytes, unsigned long portion = 0xFFFF, int failAt = 0)
        : bytes_(std::move(bytes)), portion_(portion), failAt_(failAt) {}
    ~Source() override { ++destroyed; }

    int Read() override {
        Count();
        return at_ < bytes_.size() ? static_cast<unsigned char>(bytes_[at_++]) : -1;
    }
    unsigned long Read(void* buffer, unsigned long count) override {
        Count();
        if (at_ == bytes_.size()) return EndOfData;
        const std::size_t n = std::min<std::size_t>({count, portion_, bytes_.size() - at_});
        std::memcpy(buffer, bytes_.data() + at_, n);
        at_ += n;
        return static_cast<unsigned long>(n);
    }
    unsigned long Available() override { return static_cast<unsigned long>(bytes_.size() - at_); }
    void Close() override { closed = true; }

    static inline int destroyed = 0;
    bool closed = false;

private:
    void Count() {
        if (failAt_ > 0 && --failAt_ == 0) brcore8::ThrowIOException("Source failed");
    }

    std::string bytes_;
    std::size_t at_ = 0;
    unsigned long portion_;
    int failAt_;
};

// A sink that keeps what it takes. At its n-th write (0: never) it throws, or takes but a part.
class Sink : public SOutputStream {
public:
    enum class Failure { Throw, Short };
    explicit Sink(int failAt = 0, Failure failure = Failure::Throw)
        : failAt_(failAt), failure_(failure) {}
    ~Sink() override { ++destroyed; }

    void Write(int byte) override {
        const char low = static_cast<char>(byte);
        Write(&low, 1);
    }
    unsigned long Write(const void* data, unsigned long count) override {
        ++writes;
        if (writes == failAt_) {
            if (failure_ == Failure::Throw) brcore8::ThrowIOException("Sink failed");
            count /= 2;
        }
        bytes.append(static_cast<const char*>(data), count);
        return count;
    }
    void Flush() override { ++flushes; }
    void Close() override { ++closes; }

    static inline int destroyed = 0;
    std::string bytes;
    int writes = 0;
    int flushes = 0;
    int closes = 0;

private:
    int failAt_;
    Failure failure_;
};

// Makes the n-th file operation fail; all later ones too when `forever`, as if the machine died.
class FailNthFileOperation {
public:
    explicit FailNthFileOperation(int nth, bool forever = false) {
        countdown_ = nth;
        forever_ = forever;
        triggered_ = false;
        brcore8::SetFileFilter([](brcore8::FileOperation, const char*) {
            if (countdown_ > 0) --countdown_;
            if (countdown_ != 0 || (triggered_ && !forever_)) return true;
            triggered_ = true;
            return false;
        });
    }
    FailNthFileOperation(const FailNthFileOperation&) = delete;
    FailNthFileOperation& operator=(const FailNthFileOperation&) = delete;
    ~FailNthFileOperation() { brcore8::SetFileFilter(nullptr); }

    bool Triggered() const { return triggered_; }

private:
    static inline int countdown_ = 0;
    static inline bool forever_ = false;
    static inline bool triggered_ = false;
};

#endif
