/// The program of a library tried by itself: that it links is all.
int main() {}
