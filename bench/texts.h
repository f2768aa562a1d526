// Every contestant's text of the same bytes.
#ifndef BRCORE8_BENCH_TEXTS_H
#define BRCORE8_BENCH_TEXTS_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <string_view>

namespace bench {

template <class Text>
Text Make(std::string_view bytes) {
    return Text(bytes);
}
template <>
inline QString Make(std::string_view bytes) {
    return QString::fromLatin1(bytes.data(), static_cast<int>(bytes.size()));
}
template <>
inline QByteArray Make(std::string_view bytes) {
    return QByteArray(bytes.data(), static_cast<int>(bytes.size()));
}

}  // namespace bench

#endif
