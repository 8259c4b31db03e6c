<p id="toast" role="status"></p>
<script>
document.querySelector('.grid').addEventListener('click', event => {
    if (!event.target.matches('button')) return;
    const name = event.target.closest('.card').querySelector('h3').textContent;
    const count = document.getElementById('count'), toast = document.getElementById('toast');
    count.textContent = Number(count.textContent) + 1;
    toast.textContent = name + ' is in your basket';
    toast.className = 'shown';
    setTimeout(() => toast.className = '', 2500);
});
</script>
