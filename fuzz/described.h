// What becomes of the description in the current folder, in a form that can be compared.
#pragma once

#include "OwnFolder.h"
#include "require.h"
#include "sign/AddressBook.h"
#include "sign/SignSource.h"
#include "sign/target.h"

namespace qm::fuzz {

constexpr char kPath[] = "it.json";

inline std::string text_of(const std::vector<File>& files) {
    std::string text;
    for (const File& file : files) text.append(file.name).append(file.bytes.begin(), file.bytes.end());
    return text;
}

inline std::string program(const Identity& controller) {
    sign::ProgramSource source;
    source.read(kPath);
    const auto& fitted = source.fitted(sign::target_for({}, source.program(), controller));
    return text_of(source.files(fitted.screen)) + options::joined(fitted.texts.remarks);
}

inline std::string areas(const Identity& controller) {
    sign::AreaSource source;
    source.read(kPath, controller.type.generation == 6);
    const auto& fitted = source.fitted(Screen::of(controller));
    require(fitted.areas.size() == source.ids().size());
    return options::joined(fitted.texts.remarks);
}

inline std::string playlist(const Identity& controller) {
    sign::SignSource source;
    source.read(kPath);
    std::string text;
    for (const sign::SignProgram& one : source.programs(controller)) text += text_of(*one.files);
    return text;
}

inline std::string controllers(const Identity&) {
    const sign::AddressBook book(kPath);
    for (const std::string& tag : book.tags()) require(!book.find("tag:" + tag).empty());
    std::string text;
    for (const sign::NamedController& one : book.all()) {
        require(book.find(one.label()).at(0).address() == one.address() || one.name.empty());
        text += one.label() + one.address();
    }
    return text;
}

// A program and a picture that descriptions may name.
struct DescribedFolder : OwnFolder {
    DescribedFolder() {
        const Entered entered(*this);
        Program program{Screen()};
        require(program.set_rules(1) && program.add_area(0, ePicturesArea, {0, 0, 8, 4}) &&
                program.add_text(0, "1", {}, {}, {0, 0, 8, 4}));
        write_file("picture.png", program.pages(0).value().at(0));
        write_file("program.json", R"({"id": 1, "areas": [{"id": 0, "text": "1"}]})");
    }
};

} // namespace qm::fuzz
