// A shared library that few users of the program need: it is loaded when one of its functions is first called, so
// that a start loads neither it nor the libraries behind it.
//
// A source file of its own defines each function by the name and the type that the library's header declares, with
// one line each, SORVANTO_LAZY(library, name, count of its arguments). Callers include the library's
// header and call as usual. A function without its line is told by the linker.
#pragma once

#include <QLibrary>
#include <QMutex>
#include <QString>
#include <tuple>

namespace platform {

class LazyLibrary {
public:
    /// `name` as the linker takes it ("pq"), `version` the number behind ".so.".
    LazyLibrary(const QString& name, int version) : m_library(name, version) {}

    /// The library's own function, from any thread. Throws RuntimeError (fileNotFound) where the system lacks
    /// the library or the library lacks the function.
    template <class Function>
    Function* function(const char* name) {
        return reinterpret_cast<Function*>(address(name));
    }

private:
    QFunctionPointer address(const char* name);

    QMutex m_mutex;
    QLibrary m_library;
};

/// Taking a function's type apart.
template <class>
struct Signature;
template <class Returned, class... Arguments>
struct Signature<Returned(Arguments...)> {
    using Result = Returned;
    template <std::size_t Index>
    using Argument = std::tuple_element_t<Index, std::tuple<Arguments...>>;
};

}  // namespace platform

#define SORVANTO_LAZY_TYPE(name, index) platform::Signature<decltype(name)>::Argument<index> a##index
#define SORVANTO_LAZY_TAKES1(name) SORVANTO_LAZY_TYPE(name, 0)
#define SORVANTO_LAZY_TAKES2(name) SORVANTO_LAZY_TAKES1(name), SORVANTO_LAZY_TYPE(name, 1)
#define SORVANTO_LAZY_TAKES3(name) SORVANTO_LAZY_TAKES2(name), SORVANTO_LAZY_TYPE(name, 2)
#define SORVANTO_LAZY_TAKES4(name) SORVANTO_LAZY_TAKES3(name), SORVANTO_LAZY_TYPE(name, 3)
#define SORVANTO_LAZY_TAKES5(name) SORVANTO_LAZY_TAKES4(name), SORVANTO_LAZY_TYPE(name, 4)
#define SORVANTO_LAZY_TAKES6(name) SORVANTO_LAZY_TAKES5(name), SORVANTO_LAZY_TYPE(name, 5)
#define SORVANTO_LAZY_TAKES7(name) SORVANTO_LAZY_TAKES6(name), SORVANTO_LAZY_TYPE(name, 6)
#define SORVANTO_LAZY_TAKES8(name) SORVANTO_LAZY_TAKES7(name), SORVANTO_LAZY_TYPE(name, 7)
#define SORVANTO_LAZY_GIVES1 a0
#define SORVANTO_LAZY_GIVES2 SORVANTO_LAZY_GIVES1, a1
#define SORVANTO_LAZY_GIVES3 SORVANTO_LAZY_GIVES2, a2
#define SORVANTO_LAZY_GIVES4 SORVANTO_LAZY_GIVES3, a3
#define SORVANTO_LAZY_GIVES5 SORVANTO_LAZY_GIVES4, a4
#define SORVANTO_LAZY_GIVES6 SORVANTO_LAZY_GIVES5, a5
#define SORVANTO_LAZY_GIVES7 SORVANTO_LAZY_GIVES6, a6
#define SORVANTO_LAZY_GIVES8 SORVANTO_LAZY_GIVES7, a7

/// Defines a function of `count` arguments (1 to 8) that the header of the library has declared.
#define SORVANTO_LAZY(library, name, count)                                                                  \
    extern "C" platform::Signature<decltype(name)>::Result name(SORVANTO_LAZY_TAKES##count(name)) {          \
        static auto* const own = (library).function<decltype(name)>(#name);                                  \
        return own(SORVANTO_LAZY_GIVES##count);                                                              \
    }
