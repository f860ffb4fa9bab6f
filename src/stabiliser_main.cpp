#include "RunProgram.h"
#include "stabiliser/Stabiliser.h"

int main() { return kelvane::RunProgram<kelvane::Stabiliser>("kelvane-stabiliser"); }
