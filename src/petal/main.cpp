#include "petal/run.h"

int main(int argc, char** argv) {
    return petal::run(argc, argv);
}
