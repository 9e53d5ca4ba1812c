#include "platform/report/Report.h"

#include <algorithm>

namespace tarmel::report {

namespace {

Element made(Element::Kind kind, const QString& source, Box place, const QString& name) {
    Element element;
    element.kind = kind;
    element.source = source;
    element.place = place;
    element.name = name;
    return element;
}

}  // namespace

Element label(const QString& text, Box place, const QString& name) {
    return made(Element::Kind::Label, text, place, name);
}

Element field(const QString& column, Box place) {
    return made(Element::Kind::Field, column, place, column);
}

Element sum(const QString& column, Box place, const QString& name) {
    return made(Element::Kind::Sum, column, place, name).right();
}

Element pageText(const QString& text, Box place) {
    return made(Element::Kind::PageText, text, place, QString());
}

Element image(const QString& key, Box place, const QString& name) {
    return made(Element::Kind::Image, key, place, name);
}

Element line(Box place) {
    return made(Element::Kind::Line, QString(), place, QString());
}

Element frame(Box place) {
    return made(Element::Kind::Frame, QString(), place, QString());
}

std::vector<Section*> Report::sections() {
    return {&reportHeader, &pageHeader,  &groupHeader,  &groupContinued, &groupTitles,
            &detail,       &groupFooter, &reportFooter, &pageFooter};
}

Element* Report::find(const QString& element) {
    for (Section* section : sections()) {
        const auto found = std::find_if(section->elements.begin(), section->elements.end(),
                                        [&](const Element& e) { return e.name == element; });
        if (found != section->elements.end()) return &*found;
    }
    return nullptr;
}

}  // namespace tarmel::report
