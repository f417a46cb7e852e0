// The buttons of what can be done about a happening, one for each action.
#pragma once

#include "core/News.h"

class QBoxLayout;

namespace sorvanto {

enum class NewsLook { Buttons, Words };

/// Puts them in the place of those that an earlier call has put there; nullptr for none. chosen: called before one is
/// run; may be empty.
void setNewsButtons(QBoxLayout& row, NewsLook look, News& news, const News::Item* item,
                    const std::function<void()>& chosen = {});

}  // namespace sorvanto
