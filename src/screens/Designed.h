// How a form with members that follow its controls is set up.
#pragma once

#include <memory>

class QWidget;

namespace sorvanto {

/// The design of a form, laid out on it: for members that look for its controls.
template <class Design>
std::unique_ptr<Design> designed(QWidget* form) {
    auto design = std::make_unique<Design>();
    design->setupUi(form);
    return design;
}

}  // namespace sorvanto
