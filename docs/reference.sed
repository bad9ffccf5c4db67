# Turns the headers' plain comments into what Doxygen reads: the block at the top of a file describes the file, blocks
# in front of a declaration the declaration, and a comment behind one likewise. What Doxygen would act on is escaped.
1s,^// ,/// \\file\n/// ,
/^ *\/\/ *NOLINT/d
/^ *\/\// {
    s,[<>%@#],\\&,g
    s,^\( *\)//\($\| \),\1///\2,
}
/[;{),] *\/\/ / {
    :escape
    s,\(// .*[^\\]\)\([<>%@#]\),\1\\\2,
    t escape
    s,\([;{),] *\)// ,\1///< ,
}
