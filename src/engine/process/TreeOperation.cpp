#include "engine/process/TreeOperation.h"

namespace {

int underWay = 0;

}  // namespace

TreeOperationScope::TreeOperationScope() {
    ++underWay;
}

TreeOperationScope::~TreeOperationScope() {
    --underWay;
}

bool TreeOperationUnderWay() {
    return underWay > 0;
}
