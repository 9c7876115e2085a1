// The least that a C++ program can do.
int main() {}
