// What the container tests share: counted elements, small stacks, and text of what is listed.
#ifndef BRCORE8_TESTS_CONTAINERS_SUPPORT_H
#define BRCORE8_TESTS_CONTAINERS_SUPPORT_H

#include <brcore8/containers/dlist.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <stdexcept>
#include <string>

// A value that counts how many of it live, and whose copy throws when its turn has come.
class Counted {
public:
    static inline int live = 0;
    static inline int copiesUntilThrow = -1;  // -1: never
    static inline bool throwForever = false;

    Counted(int value = 0) : value_(value) { ++live; }
    Counted(const Counted& other) : value_(other.value_) {
        if (copiesUntilThrow == 0) {
            if (!throwForever) copiesUntilThrow = -1;
            throw std::runtime_error("copy");
        }
        if (copiesUntilThrow > 0) --copiesUntilThrow;
        ++live;
    }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --live; }
    operator int() const { return value_; }

private:
    int value_;
};

// The same with a move that does not throw, and an address that matters.
class Movable {
public:
    Movable(int value = 0) : value_(value), self_(this) { ++Counted::live; }
    Movable(const Movable& other) : Movable(int{other}) {}
    Movable(Movable&& other) noexcept : Movable(std::exchange(other.value_, -1)) {}
    Movable& operator=(const Movable&) = delete;
    ~Movable() { --Counted::live; }
    operator int() const { return self_ == this ? value_ : -2; }

private:
    int value_;
    const Movable* self_;
};

// An item with a letter that counts how many of it live and writes down who dies.
template <class Base>
class Letter : public Base {
public:
    static inline int live = 0;
    static inline std::string deaths;

    explicit Letter(char letter) : letter_(letter) { ++live; }
    Letter(const Letter&) = delete;
    ~Letter() override {
        --live;
        deaths += letter_;
    }
    char Get() const { return letter_; }

private:
    char letter_;
};

template <class Base>
char LetterOf(SDListItem* item) {
    return item != nullptr ? static_cast<Letter<Base>*>(item)->Get() : '-';
}

// Runs the body on a stack of 256 KiB.
template <class Body>
void OnSmallStack(Body body) {
    pthread_attr_t attributes;
    ASSERT_EQ(0, pthread_attr_init(&attributes));
    ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, 256 * 1024));
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<Body*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(0, pthread_create(&thread, &attributes, run, &body));
    ASSERT_EQ(0, pthread_join(thread, nullptr));
    pthread_attr_destroy(&attributes);
}

#endif
