// Makes the identity text of a chemical or formula row.
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <functional>

namespace sorvanto {

/// A GUID as the platform hands it out.
struct Guid {
    std::uint32_t Data1 = 0;
    std::uint16_t Data2 = 0;
    std::uint16_t Data3 = 0;
    std::array<std::uint8_t, 8> Data4{};
};

class GUIDFactory {
public:
    /// Fills the record and gives 0 on success. Tests replace it; empty restores the random source.
    using Source = std::function<std::int32_t(Guid&)>;
    static void setSource(Source source);

    /// Five groups of upper-case hexadecimal, normally 8-4-4-4-12.
    QString CreateGUID();

private:
    QString guidText();
    static QString zeros(qsizetype length, qsizetype actual);
};

}  // namespace sorvanto
