<footer>
<ul>
{dynamic links}<li><a href="{*::url}">{htmlspecialchars *::title}</a></li>
{/dynamic}</ul>
<p>Call us: {phone}. Prices include taxes; shipping is free of charge from 50 EUR.</p>
<p>© {year} {htmlspecialchars shop}</p>
</footer>
</body>
</html>
