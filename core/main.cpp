// Entry of the program.
int main() { return 0; }
