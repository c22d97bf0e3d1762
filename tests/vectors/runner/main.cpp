// kvo_vectors DIR: golden vectors against the production code.
#include "runner.h"

#include <cstdlib>
#include <exception>
#include <iostream>

static void addAllFunctions() {
#ifdef KVO_QT_VECTORS
    kvo::vectors::addFormFunctions(); // first: a function may have a plain body besides
#endif
    kvo::vectors::addCoreFunctions();
    kvo::vectors::addLinkFunctions();
    kvo::vectors::addGraphFunctions();
    kvo::vectors::addLibraryFunctions();
    kvo::vectors::addSetupFunctions();
    kvo::vectors::addCalcFunctions();
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: kvo_vectors DIR\n";
        return 2;
    }
#if defined(KVO_QT_VECTORS) && !defined(_WIN32)
    // The widgets are real, but no window is to appear: an own choice of the caller wins.
    setenv("QT_QPA_PLATFORM", KVO_OFFSCREEN, 0);
#endif
#ifdef KVO_QT_VECTORS
    const auto application = kvo::vectors::makeApplication();
#endif
    try {
        addAllFunctions();
        return kvo::vectors::runVectors(argv[1], std::cout);
    } catch (const std::exception& error) {
        std::cerr << "kvo_vectors: " << error.what() << '\n';
        return 1;
    }
}
