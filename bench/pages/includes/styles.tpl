<!-- {styles_title} --><link rel="stylesheet" href="{styles_url}/site.css"><style>body::after { content: "{styles_text}" }</style>
