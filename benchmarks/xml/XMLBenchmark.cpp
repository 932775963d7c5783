// Parsing, printing, copying and destroying trees of 1 MB. Parsing is measured against the
// tokenizer alone with empty handlers, which no tree can beat, and against libxml2's trees;
// printing against pugixml.

#include "Documents.h"

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/text/StringConversions.h>
#include <krcore/values/Error.h>
#include <krcore/xml/XML.h>

#include <benchmark/benchmark.h>
#include <expat.h>

#ifdef KR_PEER_LIBXML2
#include <libxml/parser.h>
#include <libxml/tree.h>
#endif
#ifdef KR_PEER_PUGIXML
#include <pugixml.hpp>
#endif

#include <cstdlib>
#include <string>

using KrCore::InterfacePtr;
using KrCore::String;
using KrCore::XML;

namespace {

int bytesOf(const std::u16string& text) { return static_cast<int>(text.size() * sizeof(char16_t)); }

void benchmarkNothing(benchmark::State& state) {
    state.SkipWithError("the document does not parse");
}

InterfacePtr<XML> parse(const String& text) {
    KrCore::Error error;
    int pos = 0;
    return InterfacePtr<XML>::adopt(XML::parse(text, pos, error, false, false, false));
}

void parseKrCore(benchmark::State& state, const Document& document) {
    const String text = KrCore::fromUtf16(document.text);
    if (!parse(text)) return benchmarkNothing(state);
    for (auto _ : state) {
        InterfacePtr<XML> tree = parse(text);
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
    }
}

/// The same set-up as the library's.
void parseExpat(benchmark::State& state, const Document& document) {
    constexpr XML_Char separator[] = {'\n', 0};
    constexpr XML_Char encoding[] = {'U', 'T', 'F', '-', '1', '6', 0};
    for (auto _ : state) {
        XML_Parser parser = XML_ParserCreate_MM(nullptr, nullptr, separator);
        XML_SetEncoding(parser, encoding);
        XML_SetElementHandler(
            parser, [](void*, const XML_Char*, const XML_Char**) {}, [](void*, const XML_Char*) {});
        XML_SetNamespaceDeclHandler(
            parser, [](void*, const XML_Char*, const XML_Char*) {}, [](void*, const XML_Char*) {});
        XML_SetCharacterDataHandler(parser, [](void*, const XML_Char*, int) {});
        XML_SetCommentHandler(parser, [](void*, const XML_Char*) {});
        XML_SetProcessingInstructionHandler(parser, [](void*, const XML_Char*, const XML_Char*) {});
        XML_SetCdataSectionHandler(
            parser, [](void*) {}, [](void*) {});
        const auto* bytes = reinterpret_cast<const char*>(document.text.data());
        if (XML_Parse(parser, bytes, bytesOf(document.text), 1) != XML_STATUS_OK)
            benchmarkNothing(state);
        XML_ParserFree(parser);
    }
}

void destroyKrCore(benchmark::State& state, const Document& document) {
    const String text = KrCore::fromUtf16(document.text);
    for (auto _ : state) {
        state.PauseTiming();
        InterfacePtr<XML> tree = parse(text);
        state.ResumeTiming();
        tree.reset();
    }
}

void copyKrCore(benchmark::State& state, const Document& document) {
    const InterfacePtr<XML> tree = parse(KrCore::fromUtf16(document.text));
    for (auto _ : state) {
        XML* copy = tree->copy_r(false);
        state.PauseTiming();
        copy->release();
        state.ResumeTiming();
    }
}

void printKrCore(benchmark::State& state, const Document& document) {
    const InterfacePtr<XML> tree = parse(KrCore::fromUtf16(document.text));
    for (auto _ : state)
        benchmark::DoNotOptimize(tree->toXMLString(-1).length());
}

int countNodes(const XML& node) {
    int count = 1 + InterfacePtr<XML>::adopt(node.get_r("@*", 0))->length();
    for (int index = 0; index < node.length(); ++index)
        count += countNodes(*node.getChild(index));
    return count;
}

/// Memory of a tree, its heap's headers included.
void sizeKrCore(benchmark::State& state, const Document& document) {
    const String text = KrCore::fromUtf16(document.text);
    KrCore::Heap::setCacheSize(0);
    int blocks = 0;
    int before = 0;
    int after = 0;
    for (auto _ : state) {
        KrCore::Heap::getMemoryStatistics(blocks, before);
        const InterfacePtr<XML> tree = parse(text);
        KrCore::Heap::getMemoryStatistics(blocks, after);
        state.counters["bytes per node"] = double(after - before) / countNodes(*tree);
    }
    KrCore::Heap::setCacheSize(102400);
}

void addChildren(benchmark::State& state) {
    for (auto _ : state) {
        const InterfacePtr<XML> parent = InterfacePtr<XML>::adopt(new XML("parent"));
        const String name = "child";
        for (int count = 0; count < state.range(0); ++count)
            parent->add(name);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

#ifdef KR_PEER_LIBXML2
xmlDocPtr parseTree(const Document& document) {
    return xmlReadMemory(reinterpret_cast<const char*>(document.text.data()),
                         bytesOf(document.text), nullptr, "UTF-16LE", XML_PARSE_HUGE);
}

void parseLibxml2(benchmark::State& state, const Document& document) {
    for (auto _ : state) {
        xmlDocPtr tree = parseTree(document);
        state.PauseTiming();
        if (!tree) return benchmarkNothing(state);
        xmlFreeDoc(tree);
        state.ResumeTiming();
    }
}

void destroyLibxml2(benchmark::State& state, const Document& document) {
    for (auto _ : state) {
        state.PauseTiming();
        xmlDocPtr tree = parseTree(document);
        state.ResumeTiming();
        xmlFreeDoc(tree);
    }
}

void copyLibxml2(benchmark::State& state, const Document& document) {
    xmlDocPtr tree = parseTree(document);
    for (auto _ : state) {
        xmlDocPtr copy = xmlCopyDoc(tree, 1);
        state.PauseTiming();
        xmlFreeDoc(copy);
        state.ResumeTiming();
    }
    xmlFreeDoc(tree);
}
#endif

#ifdef KR_PEER_PUGIXML
struct Utf16Writer : pugi::xml_writer {
    std::string bytes;
    void write(const void* data, std::size_t size) override {
        bytes.append(static_cast<const char*>(data), size);
    }
};

void printPugixml(benchmark::State& state, const Document& document) {
    pugi::xml_document tree;
    tree.load_buffer(document.text.data(), std::size_t(bytesOf(document.text)),
                     pugi::parse_default | pugi::parse_ws_pcdata, pugi::encoding_utf16_le);
    for (auto _ : state) {
        Utf16Writer writer;
        tree.save(writer, "", pugi::format_raw | pugi::format_no_declaration,
                  pugi::encoding_utf16_le);
        benchmark::DoNotOptimize(writer.bytes.data());
    }
}
#endif

void add(const char* work, const Document& document, const char* contender,
         void (*run)(benchmark::State&, const Document&)) {
    const std::string name = std::string("xml/") + work + " " + document.name + "/" + contender;
    benchmark::RegisterBenchmark(name.c_str(), [&document, run](benchmark::State& state) {
        run(state, document);
    })->Unit(benchmark::kMicrosecond);
}

[[maybe_unused]] const bool isRegistered = [] {
    static const Document documents[] = {elementHeavy(), textHeavy(), attributeHeavy()};
    for (const Document& document : documents) {
        add("parse", document, "krcore", parseKrCore);
        add("parse", document, "expat", parseExpat);
        add("destroy", document, "krcore", destroyKrCore);
        add("copy", document, "krcore", copyKrCore);
        add("print", document, "krcore", printKrCore);
        add("size", document, "krcore", sizeKrCore);
#ifdef KR_PEER_LIBXML2
        add("parse", document, "libxml2", parseLibxml2);
        add("destroy", document, "libxml2", destroyLibxml2);
        add("copy", document, "libxml2", copyLibxml2);
#endif
#ifdef KR_PEER_PUGIXML
        add("print", document, "pugixml", printPugixml);
#endif
    }
    benchmark::RegisterBenchmark("xml/add children/krcore", addChildren)
        ->Arg(10000)
        ->Arg(100000)
        ->Unit(benchmark::kMicrosecond);
    return true;
}();

} // namespace
