// Hears what the program announces, for as long as it lives.
//   Announced announced;
//   screen.cmdSave();
//   EXPECT_EQ(announced.texts(), QStringList(u"Saved 22:14"_s));
//   announced.last().actions.front().run();
#pragma once

#include "shared/Happening.h"
#include "shared/basMain.h"

#include <QStringList>
#include <vector>

namespace support {

class Announced {
public:
    Announced() {
        sorvanto::basMain::announced = [this](const sorvanto::Happening& happening) {
            m_heard.push_back(happening);
        };
    }
    ~Announced() { sorvanto::basMain::announced = m_before; }
    Announced(const Announced&) = delete;
    Announced& operator=(const Announced&) = delete;

    QStringList texts() const {
        QStringList all;
        for (const sorvanto::Happening& happening : m_heard)
            all << happening.text;
        return all;
    }
    const sorvanto::Happening& last() const { return m_heard.at(m_heard.size() - 1); }

private:
    std::function<void(const sorvanto::Happening&)> m_before = sorvanto::basMain::announced;
    std::vector<sorvanto::Happening> m_heard;
};

}  // namespace support
